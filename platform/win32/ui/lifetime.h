#pragma once
// Whether an object still exists, for procedures that are queued on its behalf. Not ownership.

#include <memory>

namespace platform::win32 {

/// A member of the object; what is queued keeps a Watch.
class Lifetime {
 public:
  using Watch = std::weak_ptr<const int>;
  [[nodiscard]] Watch Get() const { return token_; }

 private:
  std::shared_ptr<const int> token_ = std::make_shared<const int>(0);
};

}  // namespace platform::win32
