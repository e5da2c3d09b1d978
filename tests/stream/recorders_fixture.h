#pragma once
// What the tests of the recorders share: a scripted station, files in memory, and an end after some reads.
// Not for expectations.

#include <cstddef>
#include <string>
#include <vector>

#include "stream/recorders.h"
#include "tests/stream/stream_rig.h"

namespace stream {

/// What one event of a title recorder said.
struct Playing {
  Text title, web_address, raw;
  friend bool operator==(const Playing&, const Playing&) = default;
};

class Recorders : public testing::Test {
 protected:
  Recorders() {
    state_.address = u"http://radio.example/live";
    rig_.loop.on_pump = [this] {
      if (rig_.internet.reads.size() >= stop_after_reads_) state_.stop_flag = true;
    };
  }

  void Plain(TextView extension = u".mp3") { RecordPlain(state_, u"C:\\Rec", Text(extension)); }
  void ByTitle(std::int32_t interval = 4, TextView extension = u".mp3") {
    RecordByTitle(state_, u"C:\\Rec", Text(extension), interval,
                  [this](const Text& title, const Text& address, const Text& raw) {
                    played_.push_back({title, address, raw});
                  });
  }
  std::string File(const Text& name) {
    return rig_.files.files.contains(name) ? rig_.files.files[name] : "<missing>";
  }

  StreamRig rig_;
  StreamState state_{rig_.Through()};
  std::size_t stop_after_reads_ = 20;
  std::vector<Playing> played_;
};

}  // namespace stream
