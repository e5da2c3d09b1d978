#pragma once
// A recording over doubles: a scripted station, files in memory that are known to the file port too.
// Not for real sockets or files.

#include <string>

#include "recorder/station_recording.h"
#include "tests/support/fakes.h"
#include "tests/support/icy_script.h"
#include "tests/support/memory_files.h"
#include "tests/support/memory_record_files.h"
#include "tests/support/plain_text_conversion.h"
#include "tests/support/scripted_internet.h"

namespace recorder {

using platform::Text;

/// What is recorded.
inline const Text kLink = u"http://radio.example/live";

/// The recorded files exist for the file port; names in `taken` exist without being recordings.
class FilesOfRecording : public test_support::MemoryFiles {
 public:
  explicit FilesOfRecording(const test_support::MemoryRecordFiles& recorded) : recorded_(recorded) {}
  bool PathFileExistsW(const Text& path) override {
    const Text name = path.substr(path.rfind(u'\\') + 1);
    return recorded_.files.contains(name) || MemoryFiles::PathFileExistsW(path);
  }

 private:
  const test_support::MemoryRecordFiles& recorded_;
};

struct RecorderRig {
  RecorderRig() {
    requests.request = {{4}, u"no playlist"};
    internet.answer.raw_headers = Headers(u"icy-metaint: 4\r\n");
    internet.before_read = [this] { clock.whole_seconds += seconds_per_read; };
    loop.on_pump = [this] {
      if (internet.reads.size() >= stop_after_reads) recording.Stop();
    };
  }

  static Text Headers(const Text& more) {
    return u"HTTP/1.1 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: Radio Eins\r\n" + more + u"\r\n";
  }
  /// Every connection sends `bytes` in one piece and then nothing more.
  void StationSends(const std::string& bytes) { internet.answer.reads = {{true, bytes}}; }
  std::string File(const Text& name) const {
    const auto found = record_files.files.find(name);
    return found == record_files.files.end() ? "<missing>" : found->second;
  }

  test_support::ScriptedInternet internet;
  test_support::ScriptedXmlHttpRequests requests;
  test_support::MemoryRecordFiles record_files;
  FilesOfRecording files{record_files};
  test_support::FakeEnvironment environment;
  test_support::FakeClock clock;
  test_support::FakeMessageLoop loop;
  test_support::PlainTextConversion conversion;
  int seconds_per_read = 1;
  std::size_t stop_after_reads = 10;
  StationRecording recording{
      {{internet, requests, record_files, environment, clock, loop, conversion}, files},
      u"C:\\Musik\\Aufnahmen"};
};

inline std::string TitleOf(const std::string& title) { return test_support::TitleBlock(title); }

}  // namespace recorder
