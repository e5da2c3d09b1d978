#pragma once
// Scripts of stations that send titles. Not real servers; those are with the internet adapter's tests.

#include <string>

#include "tests/support/scripted_internet.h"

namespace test_support {

/// A metadata block after eight bytes of sound.
inline std::string StreamWith(const std::string& title) {
  std::string block = "StreamTitle='" + title + "';";
  block.resize((block.size() + 15) / 16 * 16, '\0');
  return "AAAAAAAA" + std::string(1, static_cast<char>(block.size() / 16)) + block;
}

inline ScriptedAnswer StationPlaying(const std::string& title) {
  ScriptedAnswer answer;
  answer.raw_headers = u"ICY 200 OK\r\nicy-metaint:8\r\n\r\n";
  answer.reads = {{true, StreamWith(title)}};
  return answer;
}

/// By both names under which the stream client asks for "http://HOST/s".
inline void LetStationPlay(ScriptedInternet& internet, const platform::Text& host, const std::string& title) {
  internet.answers[u"http://" + host + u"/s"] = StationPlaying(title);
  internet.answers[host + u":80/s"] = StationPlaying(title);
}

}  // namespace test_support
