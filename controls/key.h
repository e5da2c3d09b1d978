#pragma once
// A key that activates a control of a window. Not the keys that a kind of control handles itself.

namespace controls {

/// Given by its character in capitals: u'S' with Ctrl, or Enter, Escape or F1 alone. The default is no key.
struct Key {
  char16_t character = 0;
  bool with_control = false;

  [[nodiscard]] constexpr explicit operator bool() const { return character != 0; }
  friend constexpr bool operator==(const Key&, const Key&) = default;
};

inline constexpr Key kEnterKey{u'\r'};
inline constexpr Key kEscapeKey{u'\x1b'};
/// It has no character; this one is of Unicode's private use.
inline constexpr Key kHelpKey{u'\uE001'};
constexpr Key WithControl(char16_t letter) { return {letter, true}; }

}  // namespace controls
