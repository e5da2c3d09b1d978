#pragma once
// Recognises the echo: a front end changes a widget, and the widget reports it like user input.
// Not what is done about it.

namespace platform::front {

/// The flag is set for as long as this lives, in which a widget follows its control.
class Following {
 public:
  explicit Following(bool& flag) : flag_(flag), outer_(flag) { flag_ = true; }
  ~Following() { flag_ = outer_; }
  Following(const Following&) = delete;
  Following& operator=(const Following&) = delete;

 private:
  bool& flag_;
  const bool outer_;
};

}  // namespace platform::front
