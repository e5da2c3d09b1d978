#pragma once
// How much processor time a piece of work takes, whatever else the machine does meanwhile.
// Not for waiting or for the program's clocks.

#include <ctime>

namespace test_support {

/// Counts from its construction on.
class ProcessorTime {
 public:
  [[nodiscard]] double Seconds() const { return static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }

 private:
  std::clock_t start_ = std::clock();
};

}  // namespace test_support
