#pragma once
// A flag that is set while a scope runs, however the scope is left. Not for what outlasts a procedure.

#include <utility>

namespace app {

/// At the end of the scope the flag gets back the value that it had before, so that scopes nest. The flag
/// outlives the scope.
class ScopedFlag {
 public:
  explicit ScopedFlag(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~ScopedFlag() { flag_ = before_; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace app
