#pragma once
// Controls that carry a caption and little else: label, frame, command button, check box.
// Not for controls whose text the user edits (controls/text_box.h).

#include <utility>

#include "controls/control.h"

namespace controls {

/// A control with a caption.
class Captioned : public Control {
 public:
  [[nodiscard]] const Text& Caption() const { return caption_; }
  void SetCaption(Text caption) { Set(caption_, std::move(caption)); }

 protected:
  ~Captioned() = default;

 private:
  Text caption_;
};

enum class LabelLook {
  kCaption,       ///< a short text on one line
  kRightCaption,  ///< the same at the right end of its place
  kText,          ///< of any length: wrapped to its width, cut with dots where its height ends
  kTitle,         ///< the same, bold and one size larger
  kNamedValues,   ///< the same; lines of the form "name: value" stand in two columns
  kStatusLine,    ///< one line along the window's lower edge, below the window's inner size
};

class Label final : public Captioned {
 public:
  [[nodiscard]] LabelLook Look() const { return look_; }
  void SetLook(LabelLook look) { Set(look_, look); }

 private:
  LabelLook look_ = LabelLook::kCaption;
};

enum class FrameLook {
  kTitled,  ///< a border with the caption in it
  kPlain,   ///< nothing is drawn, it only groups its controls
  kPanel,   ///< a filled panel that may lie over other controls
};

/// A box with a caption that contains other controls; hiding it hides them.
class Frame final : public Captioned {
 public:
  [[nodiscard]] FrameLook Look() const { return look_; }
  void SetLook(FrameLook look) { Set(look_, look); }

 private:
  FrameLook look_ = FrameLook::kTitled;
};

/// A small picture on a button, named after what it means. A front end takes it from the desktop's icons, or
/// draws it itself.
enum class Glyph {
  kNone,
  kCheckMark,
  kLoudspeaker,
  kClose,
  kPaste,
  kStart,
  kStop,
  kRecord,
  kAdd,
  kDelete,
  kSave,
  kImport,
  kExport,
  kFind,
  kList,
  kFolder
};

enum class GlyphPlace {
  kInsteadOfCaption,  ///< the caption is the letter that stands for the glyph in a symbol font
  kBeforeCaption,
};

/// What sets a button apart from its neighbours.
enum class ButtonRole {
  kUsual,
  kMain,      ///< the window's main action: it looks like a dialog's button for Enter
  kDeleting,  ///< what it takes away is gone at once: it warns by its colour while it is pointed at
};

enum class ButtonLook {
  kRaised,
  kFlat,  ///< no border
  kNone,  ///< no visible button, only a key or an entry in a menu
};

class CommandButton final : public Captioned {
 public:
  /// The user's click; a disabled button ignores it.
  void Click() {
    if (Enabled()) Clicked.Raise();
  }
  /// The secondary action (context click, menu key).
  void ContextClick() {
    if (Enabled()) ContextClicked.Raise();
  }

  [[nodiscard]] Glyph GetGlyph() const { return glyph_; }
  [[nodiscard]] GlyphPlace PlaceOfGlyph() const { return glyph_place_; }
  void SetGlyph(Glyph glyph, GlyphPlace place = GlyphPlace::kInsteadOfCaption) {
    Set(glyph_place_, place);
    Set(glyph_, glyph);
  }
  [[nodiscard]] ButtonRole Role() const { return role_; }
  void SetRole(ButtonRole role) { Set(role_, role); }
  [[nodiscard]] ButtonLook Look() const { return look_; }
  void SetLook(ButtonLook look) { Set(look_, look); }

  Event<> Clicked;
  Event<> ContextClicked;

 private:
  Glyph glyph_ = Glyph::kNone;
  GlyphPlace glyph_place_ = GlyphPlace::kInsteadOfCaption;
  ButtonRole role_ = ButtonRole::kUsual;
  ButtonLook look_ = ButtonLook::kRaised;
};

enum class CheckValue { kUnchecked = 0, kChecked = 1 };

enum class CheckLook {
  kBox,
  kNone,  ///< there is no box to be seen, only an entry in a menu
};

class CheckBox final : public Captioned {
 public:
  [[nodiscard]] CheckValue Value() const { return value_; }
  [[nodiscard]] bool Checked() const { return value_ == CheckValue::kChecked; }

  /// Raises Clicked when the value changes, as the user's click does.
  void SetValue(CheckValue value) {
    if (Set(value_, value)) Clicked.Raise();
  }

  /// The user's click: toggles the value. A disabled box ignores it.
  void Click() {
    if (Enabled()) SetValue(Checked() ? CheckValue::kUnchecked : CheckValue::kChecked);
  }

  [[nodiscard]] CheckLook Look() const { return look_; }
  void SetLook(CheckLook look) { Set(look_, look); }

  Event<> Clicked;

 private:
  CheckValue value_ = CheckValue::kUnchecked;
  CheckLook look_ = CheckLook::kBox;
};

}  // namespace controls
