#pragma once
// Drives the adapter in the order of calls in which the player does: resolver, source, descriptor, topology,
// session, clock, services. Not the player; its rules have their own tests.

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "platform/gstreamer/gst_media.h"
#include "ports/media_interfaces.h"
#include "tests/support/fakes.h"

namespace gstreamer_test {

using platform::HResult;
using platform::InterfaceHandle;
using platform::Text;

/// For what takes moments, but may take much longer on a busy machine.
inline constexpr std::chrono::seconds kSoon{15};

/// File names are UTF-8 and separated by "/".
class PlainPaths : public platform::NativePaths {
 public:
  Text FromNative(const std::string& native) override;
  std::string ToNative(const Text& path) override;
  std::string ToNativeForReading(const Text& path) override { return ToNative(path); }
};

Text ToText(const std::string& utf8);

template <typename... Types>
std::optional<HResult> Call(platform::InterfaceCalls& calls, InterfaceHandle object,
                            const platform::Operation<Types...>& operation, Types... arguments) {
  const std::vector<platform::Argument> list = {platform::Argument(arguments)...};
  return calls.DispCallFunc(object, operation.interface_id, operation.slot, list);
}

/// Plays in time, but into nothing.
platform::gstreamer::GstMediaOptions Unheard();

/// One adapter and at most one item.
class SessionDriver {
 public:
  explicit SessionDriver(platform::gstreamer::GstMediaOptions options = {});
  ~SessionDriver();

  /// Opens an address up to the ready session with its services; the result of opening.
  HResult Open(const std::string& address);
  HResult OpenStream(platform::StreamObject stream);
  /// Everything but the services, as a caller that gives up would leave it.
  HResult Resolve(const std::string& address);
  void Close();

  HResult Start();
  HResult Pause();
  HResult Stop();
  std::int32_t State();
  double Seconds();
  /// Nothing when the attribute is absent.
  std::optional<double> DurationSeconds();
  std::vector<float> Peaks();
  int Channels();
  float Volume();
  HResult SetVolume(float volume);
  bool Mute();
  HResult SetMute(bool mute);
  std::vector<Text> Names();
  /// Empty when the property is unknown.
  platform::PropertyValue Property(const Text& name);
  std::string TextProperty(const Text& name);

  platform::gstreamer::GstMedia& Media() { return media_; }
  test_support::FakeMessageLoop loop;
  std::vector<std::string> log;
  InterfaceHandle source = InterfaceHandle::kNone;
  InterfaceHandle session = InterfaceHandle::kNone;
  InterfaceHandle clock = InterfaceHandle::kNone;
  InterfaceHandle presentation = InterfaceHandle::kNone;
  InterfaceHandle volume = InterfaceHandle::kNone;
  InterfaceHandle metadata = InterfaceHandle::kNone;
  InterfaceHandle meter = InterfaceHandle::kNone;

 private:
  platform::gstreamer::GstMediaOptions WithLog(platform::gstreamer::GstMediaOptions options);
  HResult KeepSource(HResult opened, std::int32_t type, InterfaceHandle object);
  bool BuildSession();
  bool AddBranch(InterfaceHandle topology);
  bool FillNodes(InterfaceHandle source_node, InterfaceHandle output_node, InterfaceHandle stream);
  void CreateService();
  void FindMeter();
  void Release(InterfaceHandle& handle);

  PlainPaths paths_;
  platform::gstreamer::GstMedia media_;
};

}  // namespace gstreamer_test
