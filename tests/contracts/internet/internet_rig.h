#pragma once
// What every test of the internet adapter needs: a scripted server, the adapter, and short ways to ask.
// Not for tests of the stream client's rules.

#include <algorithm>
#include <chrono>
#include <string>

#include "internet_under_test.h"
#include "tests/support/fakes.h"
#include "tests/support/scripted_internet.h"

namespace platform {

using namespace std::chrono_literals;
using test_support::Header;
using test_support::Script;

constexpr auto kDeadline = 10s;
constexpr std::uint32_t kReload = kInternetFlagReload;

inline Text Wide(const std::string& ascii) { return Text(ascii.begin(), ascii.end()); }

struct InternetRig {
  explicit InternetRig(const under_test::InternetSettings& settings = {})
      : internet(loop, conversion, settings) {}

  /// Opens an address of the server; kNone when that failed.
  InternetHandle OpenUrl(const std::string& url, const Text& headers = u"", std::uint32_t flags = kReload) {
    const InternetHandle session = internet.InternetOpenW(u"Agent/1", kInternetOpenTypeDirect);
    return internet.InternetOpenUrlW(session, Wide(url), headers, flags);
  }
  InternetHandle Open(const std::string& target = "/") { return OpenUrl(server.Url(target)); }

  /// A queried text; empty when there is none.
  Text Query(InternetHandle request, std::uint32_t level) {
    std::uint32_t size = 0;
    internet.HttpQueryInfoW(request, level, {}, size);
    Text text(size / sizeof(char16_t), u'\0');
    const bool ok = internet.HttpQueryInfoW(
        request, level, std::as_writable_bytes(std::span(text.data(), text.size())), size);
    return ok ? text : Text();
  }
  Text Status(InternetHandle request) { return Query(request, kHttpQueryStatusCode); }
  std::string Headers(InternetHandle request) {
    return test_support::Ascii(Query(request, kHttpQueryRawHeadersCrLf));
  }

  /// One read: "bytes", or "<nothing>", "<end>" after a clean end, or "<failed>".
  std::string Read(InternetHandle request, std::size_t size = 1024) {
    std::string bytes(size, '\0');
    const InternetRead read =
        internet.InternetReadFile(request, std::as_writable_bytes(std::span(bytes.data(), size)));
    if (!read.ok) return "<failed>";
    if (read.ended) return "<end>";
    return read.count == 0 ? "<nothing>" : bytes.substr(0, read.count);
  }
  /// Reads until something comes.
  std::string ReadSomething(InternetHandle request, std::size_t size = 1024) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    std::string bytes = Read(request, size);
    while (bytes == "<nothing>" && std::chrono::steady_clock::now() < deadline) bytes = Read(request, size);
    return bytes;
  }
  /// Everything up to `count` bytes, or up to the first failure.
  std::string ReadAll(InternetHandle request, std::size_t count, std::size_t size = 1024) {
    std::string all;
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (all.size() < count && std::chrono::steady_clock::now() < deadline) {
      const std::string bytes = Read(request, std::min(size, count - all.size()));
      if (bytes == "<failed>" || bytes == "<end>") return all + bytes;
      if (bytes != "<nothing>") all += bytes;
    }
    return all;
  }

  under_test::IcyServer server;
  test_support::FakeMessageLoop loop;
  under_test::NetText conversion;
  under_test::Internet internet;
};

inline const std::string kOk = Header("HTTP/1.1 200 OK");

}  // namespace platform
