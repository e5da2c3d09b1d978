#pragma once
// Controls with a text that the user edits: text box, text box with arrows, combo box.
// Not for fixed texts (controls/captioned.h).

#include <charconv>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "controls/control.h"

namespace controls {

/// A control with an editable text. TextChanged is raised for every new text, typed or set.
class TextControl : public Control {
 public:
  [[nodiscard]] const Text& GetText() const { return text_; }
  void SetText(Text text) {
    if (Set(text_, std::move(text))) TextChanged.Raise();
  }

  Event<> TextChanged;

 protected:
  ~TextControl() = default;

 private:
  Text text_;
};

class TextBox final : public TextControl {};

/// A text box with two arrows that count a whole number up and down.
class UpDownTextBox final : public TextControl {
 public:
  static constexpr int kMinimum = 0;
  static constexpr int kMaximum = 99999;
};

/// A text box with a list of choices. Choosing from the list, by the user or by SetListIndex, sets the text
/// and raises Clicked; typing only changes the text.
class ComboBox final : public TextControl {
 public:
  [[nodiscard]] const std::vector<Text>& Items() const { return items_; }
  void AddItem(Text item) {
    items_.push_back(std::move(item));
    Changed.Raise();
  }

  /// The chosen entry, -1 for none; a text that is not the entry's, typed or set, is none.
  [[nodiscard]] int ListIndex() const {
    const bool shown = list_index_ >= 0 && items_[static_cast<std::size_t>(list_index_)] == GetText();
    return shown ? list_index_ : -1;
  }

  /// Chooses an entry. False, and nothing changes, when there is no such entry.
  bool SetListIndex(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= items_.size()) return false;
    if (ListIndex() == index) return true;
    const Text& item = items_[static_cast<std::size_t>(index)];
    const bool same_text = GetText() == item;
    // Index and text change together, so that nobody is notified of one without the other.
    list_index_ = index;
    if (same_text) {
      Changed.Raise();
    } else {
      SetText(item);
    }
    Clicked.Raise();
    return true;
  }

  /// The user's typing: the text is not a chosen entry any more.
  void Type(Text text) {
    Set(list_index_, -1);
    SetText(std::move(text));
  }

  Event<> Clicked;

 private:
  std::vector<Text> items_;
  int list_index_ = -1;
};

}  // namespace controls
