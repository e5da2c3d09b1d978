#pragma once
// All the doubles that a stream client needs, and stations for them.
// Not for real sockets; those are with the adapter's tests.

#include <string>
#include <vector>

#include "stream/cls_funkhaus.h"
#include "tests/support/fakes.h"
#include "tests/support/icy_script.h"
#include "tests/support/memory_record_files.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/scripted_internet.h"

namespace stream {

/// Sound, as much as an announced interval of 8 has between two metadata blocks.
inline const std::string kEightBytes(8, 'A');

struct StreamRig {
  test_support::ScriptedInternet internet;
  test_support::ScriptedXmlHttpRequests requests;
  test_support::MemoryRecordFiles files;
  test_support::FakeEnvironment environment;
  test_support::FakeClock clock;
  test_support::FakeMessageLoop loop;
  test_support::PlainTextConversion conversion;

  [[nodiscard]] Ports Through() { return {internet, requests, files, environment, clock, loop, conversion}; }

  /// Every station sends `bytes`, in reads of at most `piece` bytes, and then nothing more.
  void StationSends(const std::string& bytes, std::size_t piece = 1 << 20) {
    internet.answer.reads.clear();
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
      internet.answer.reads.push_back({true, bytes.substr(at, piece)});
    }
  }

  /// Every read takes that long.
  void ReadsTake(double seconds) {
    internet.before_read = [this, seconds] { clock.seconds_since_midnight += seconds; };
  }
};

/// A block of just this text, padded.
inline std::string Block(const std::string& text) { return test_support::MetadataBlock(text); }

}  // namespace stream
