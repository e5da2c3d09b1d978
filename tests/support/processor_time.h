#pragma once
// How much processor time a piece of work takes, whatever else the machine does meanwhile.
// Not for waiting or for the program's clocks.

#include <ctime>

namespace test_support {

#ifndef __has_feature
#define __has_feature(feature) 0
#endif
/// How many times slower than usual this build may be: checking every address costs that much.
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
inline constexpr double kSlowness = 5;
#else
inline constexpr double kSlowness = 1;
#endif

/// Counts from its construction on.
class ProcessorTime {
 public:
  [[nodiscard]] double Seconds() const { return static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }

 private:
  std::clock_t start_ = std::clock();
};

}  // namespace test_support
