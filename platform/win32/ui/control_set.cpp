#include "platform/win32/ui/control_set.h"

#include "platform/win32/base/windows_api.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "platform/win32/ui/captioned_bindings.h"
#include "platform/win32/ui/shown_text.h"
#include "platform/win32/ui/text_bindings.h"
#include "platform/win32/ui/value_bindings.h"

namespace platform::win32 {
namespace {

/// The field inside a combo box: the keyboard goes to it, so screen readers ask it for a name. Null for
/// others.
HWND FieldInside(HWND control) {
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  const bool is_combo = IsOfClass(control, L"ComboBox") && ::GetComboBoxInfo(control, &info) != 0;
  return is_combo ? info.hwndItem : nullptr;
}

void Number(const ControlBinding* binding, int number) {
  if (binding != nullptr) ::SetWindowLongPtrW(binding->Handle(), GWLP_ID, number);
}

}  // namespace

ControlSet::ControlSet(const app::Inventory& inventory, HWND window, const Surroundings& around,
                       const Win32Icons& icons)
    : window_(window), around_(around), icons_(icons) {
  for (const app::FormControl& entry : inventory) {
    HWND parent = entry.container == nullptr ? window : containers_.at(entry.container);
    std::visit(
        [&](auto* control) {
          if constexpr (std::is_same_v<decltype(control), controls::Timer*>) {
            timers_.push_back(std::make_unique<TimerBinding>(*control, window_, around_.loop));
          } else {
            Add(entry, *control, Make(*control, parent, entry.use));
            Number(Of(*control), kFirstControlId + static_cast<int>(&entry - inventory.data()));
          }
        },
        entry.control);
  }
  BringTextsRoundPictures(inventory);
}

ControlSet::~ControlSet() {
  for (const auto& [control, binding] : bindings_) {
    annotations_.Forget(binding->Handle());
    HWND const field = FieldInside(binding->Handle());
    if (field != nullptr) annotations_.Forget(field);
  }
  // What a container has in it comes after it in the inventory, but not in the map.
  timers_.clear();
  around_.tab_stops.Clear();
  std::vector<std::unique_ptr<ControlBinding>> containers;
  for (auto& [control, binding] : bindings_) {
    if (containers_.contains(control)) containers.push_back(std::move(binding));
  }
  std::erase_if(bindings_, [](const auto& entry) { return entry.second == nullptr; });
  bindings_.clear();
}

void ControlSet::Add(const app::FormControl& entry, controls::Control& control,
                     std::unique_ptr<ControlBinding> binding) {
  if (!binding) return;
  // The system puts a new window below its neighbours, and takes a label for the name of what follows it. So
  // it stays in a container; those that are placed over each other are in the window itself.
  if (entry.container == nullptr) {
    ::SetWindowPos(binding->Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  Name(entry.use, *binding);
  if (!entry.use.hint.empty()) {
    const Text key = KeyName(entry.use.key);
    binding->SetHint(key.empty() ? entry.use.hint : entry.use.hint + u" (" + key + u")");
  }
  if (binding->TakesKeyboard()) around_.tab_stops.Add(*binding);
  bindings_[&control] = std::move(binding);
}

void ControlSet::Name(const app::Use& use, ControlBinding& binding) {
  HWND handle = binding.Handle();
  const auto name = [this, handle, field = FieldInside(handle)](const Text& text) {
    annotations_.Name(handle, text);
    if (field != nullptr) annotations_.Name(field, text);
  };
  if (!use.accessible_name.empty()) return name(use.accessible_name);
  if (use.named_by == nullptr) return;
  const auto follow = [name, by = use.named_by] { name(by->Caption()); };
  follow();
  subscriptions_ += use.named_by->Changed.Subscribe(follow);
}

ControlBinding* ControlSet::Of(const controls::Control& control) const {
  const auto found = bindings_.find(&control);
  return found == bindings_.end() ? nullptr : found->second.get();
}

ControlBinding* ControlSet::FirstForKeyboard(HWND within) const {
  const auto& order = around_.tab_stops.Order();
  const auto found = std::ranges::find_if(order, [within](const ControlBinding* binding) {
    const bool inside = binding->Handle() == within || ::IsChild(within, binding->Handle()) != 0;
    // Before the window is shown its controls cannot be seen either.
    const bool hidden = (::GetWindowLongPtrW(binding->Handle(), GWL_STYLE) & WS_VISIBLE) == 0;
    return inside && !hidden && ::IsWindowEnabled(binding->Handle()) != 0;
  });
  return found == order.end() ? nullptr : *found;
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::Frame& frame, HWND parent,
                                                 const app::Use& /*use*/) {
  auto binding = std::make_unique<FrameBinding>(frame, parent, around_);
  containers_[&frame] = binding->Container();
  return binding;
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::Label& label, HWND parent,
                                                 const app::Use& /*use*/) {
  switch (label.Look()) {
    case controls::LabelLook::kStatusLine: {
      auto strip = std::make_unique<StatusStripBinding>(label, parent, around_);
      annotations_.MakeLive(strip->Handle());
      return strip;
    }
    case controls::LabelLook::kCaption:
    case controls::LabelLook::kRightCaption:
      return std::make_unique<LabelBinding>(label, parent, around_);
    case controls::LabelLook::kText:
    case controls::LabelLook::kTitle:
    case controls::LabelLook::kNamedValues:
      break;
  }
  auto binding = std::make_unique<TextPanelBinding>(label, parent, around_);
  texts_[&label] = binding.get();
  return binding;
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::CommandButton& button, HWND parent,
                                                 const app::Use& use) {
  if (button.Look() == controls::ButtonLook::kNone) return nullptr;
  const bool is_default = use.key == controls::kEnterKey || button.Role() == controls::ButtonRole::kMain;
  return std::make_unique<CommandButtonBinding>(button, parent, around_,
                                                is_default ? DefaultButton::kYes : DefaultButton::kNo);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::CheckBox& box, HWND parent,
                                                 const app::Use& /*use*/) {
  if (box.Look() == controls::CheckLook::kNone) return nullptr;
  return std::make_unique<CheckBoxBinding>(box, parent, around_);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::TextBox& box, HWND parent,
                                                 const app::Use& /*use*/) {
  return std::make_unique<TextBoxBinding>(box, parent, around_);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::UpDownTextBox& box, HWND parent,
                                                 const app::Use& /*use*/) {
  return std::make_unique<UpDownBinding>(box, parent, around_);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::ComboBox& box, HWND parent,
                                                 const app::Use& /*use*/) {
  return std::make_unique<ComboBoxBinding>(box, parent, around_);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::ProgressBar& bar, HWND parent,
                                                 const app::Use& /*use*/) {
  return std::make_unique<ProgressBarBinding>(bar, parent, around_);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::ScrollBar& bar, HWND parent,
                                                 const app::Use& /*use*/) {
  return std::make_unique<ScrollBarBinding>(bar, parent, around_);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::Image& image, HWND parent,
                                                 const app::Use& /*use*/) {
  return std::make_unique<ImageBinding>(image, parent, around_, icons_);
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::ListView& list, HWND parent,
                                                 const app::Use& /*use*/) {
  auto binding = std::make_unique<ListBinding>(list, parent, around_, icons_);
  lists_.push_back(binding.get());
  return binding;
}

std::unique_ptr<ControlBinding> ControlSet::Make(controls::RowCommand& /*command*/, HWND /*parent*/,
                                                 const app::Use& /*use*/) {
  return nullptr;  // the lists' menu has it
}

void ControlSet::BringTextsRoundPictures(const app::Inventory& inventory) {
  for (const app::FormControl& with_picture : inventory) {
    auto* picture = app::As<controls::Image>(with_picture);
    if (picture == nullptr) continue;
    for (const app::FormControl& with_text : inventory) {
      auto* label = app::As<controls::Label>(with_text);
      const bool beside =
          label != nullptr && texts_.contains(label) && with_text.container == with_picture.container;
      if (beside) pairs_.push_back({picture, label, texts_.at(label)});
    }
    subscriptions_ += picture->Changed.Subscribe([this] {
      for (const TextBesidePicture& pair : pairs_) Flow(pair);
    });
  }
  for (const TextBesidePicture& pair : pairs_) Flow(pair);
}

void ControlSet::Flow(const TextBesidePicture& pair) const {
  const PixelPlace text = around_.scale.Pixels(pair.label->GetPlace());
  PixelPlace picture = around_.scale.Pixels(pair.picture->GetPlace());
  picture.left -= text.left;
  picture.top -= text.top;
  const bool shown = pair.picture->Visible() && pair.picture->Picture() != 0;
  const bool covers = picture.left < text.width && picture.top < text.height &&
                      picture.left + picture.width > 0 && picture.top + picture.height > 0;
  pair.text->SetObstacle(shown && covers ? picture : PixelPlace{});
}

void ControlSet::FollowScale() {
  for (const auto& [control, binding] : bindings_) binding->FollowScale();
  for (const TextBesidePicture& pair : pairs_) Flow(pair);
}

void ControlSet::FollowColors() {
  for (const auto& [control, binding] : bindings_) binding->FollowColors();
}

}  // namespace platform::win32
