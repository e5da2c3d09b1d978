#pragma once
// An MP3 recording as a list of whole frames that can be sent in an endless loop. Not a decoder.

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// The frames follow the header of ISO/IEC 11172-3, section 2.4.1.3 (and its extension to lower sampling
/// rates, ISO/IEC 13818-3); only layer III is taken.
class Mp3Loop {
 public:
  /// Takes the whole frames of a file; tags before, between and behind them, a leading frame that carries
  /// only an encoder's table (Xing, Info) and a cut last frame are left out. Throws std::invalid_argument
  /// when there is none.
  explicit Mp3Loop(std::string_view file);

  [[nodiscard]] std::size_t Count() const { return frames_.size(); }
  /// The bytes of frame `index` of the endless loop.
  [[nodiscard]] std::string_view Frame(std::size_t index) const { return frames_[index % frames_.size()]; }
  [[nodiscard]] std::chrono::nanoseconds FrameDuration() const { return frame_duration_; }
  /// In kbit/s, as in `icy-br`; of the first frame.
  [[nodiscard]] int BitRate() const { return bit_rate_; }

 private:
  std::vector<std::string> frames_;
  std::chrono::nanoseconds frame_duration_{0};
  int bit_rate_ = 0;
};

}  // namespace test_support
