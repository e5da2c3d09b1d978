#pragma once
// A media framework for tests: keeps every call in order, can fail each of them, and counts references.
// Not a player of anything; it answers what the test has set.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "ports/interface_call.h"
#include "ports/interface_dispatch.h"
#include "ports/media_framework.h"
#include "ports/property_value.h"
#include "ports/text.h"

namespace test_support {

inline constexpr platform::HResult kUnsupportedService = static_cast<platform::HResult>(0xC00D36BAu);
inline constexpr platform::HResult kClassNotRegistered = static_cast<platform::HResult>(0x80040154u);
inline constexpr platform::HResult kNoSuchProperty = static_cast<platform::HResult>(0xC00D3E8Eu);

inline constexpr platform::Guid kAudioType{
    0x73647561, 0x0000, 0x0010, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};
inline constexpr platform::Guid kVideoType{
    0x73646976, 0x0000, 0x0010, {0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}};

/// Every reference that it hands out is a handle of its own, with a label ("session", of the second one
/// "session#2") that represents it in the record.
class RecordingMedia : public platform::MediaFramework, public platform::InterfaceCalls {
 public:
  struct Stream {
    std::int32_t selected = 1;
    platform::Guid major_type = kAudioType;
  };
  struct AudioSession {
    std::uint32_t process_id = 4711;
    bool has_control2 = true;
    bool has_meter = true;
  };
  /// How a call goes wrong: with a result, or (nothing) by being impossible to make. The framework's own
  /// functions are always possible.
  using Fault = std::optional<platform::HResult>;
  static constexpr Fault kImpossible = std::nullopt;

  RecordingMedia();
  ~RecordingMedia() override = default;
  RecordingMedia(const RecordingMedia&) = delete;
  RecordingMedia& operator=(const RecordingMedia&) = delete;

  // What the items are and what they answer.
  platform::HResult open_result = platform::kSOk;
  std::int32_t object_type = platform::kMfObjectMediaSource;
  std::vector<Stream> streams{Stream{}};
  std::optional<std::int64_t> duration;  ///< none: the item does not name one
  std::int64_t position = 0;
  std::int32_t play_state = 0;  ///< of the newest session's clock
  bool has_volume = true;
  float volume = 1.0f;
  std::int32_t mute = 0;
  bool has_metadata = true;
  platform::PropertyValue property_names;
  std::map<platform::Text, platform::PropertyValue> properties;
  std::vector<AudioSession> audio_sessions{AudioSession{}};
  float peak = 0.0f;
  std::vector<float> channel_peaks{0.0f, 0.0f};

  /// Sets `properties` and, as a vector of wide strings, `property_names`.
  void SetMetadata(const std::vector<std::pair<platform::Text, platform::Text>>& texts);

  /// Every call of the operation of this name ("MFStartup", "IMFMediaSession::Stop") goes wrong like this.
  std::map<std::string, Fault> faults;
  /// The one call with this number, counted from 1 over all calls, goes wrong like this.
  std::size_t fault_at = 0;
  Fault fault;
  /// Is called with the record of a call before the call is executed.
  std::function<void(const std::string& call)> on_call;

  /// The calls so far, as "session.SetTopology(0, topology)" or "MFStartup(1, 0)". Texts are in quotes, known
  /// GUIDs under their names, absent handles as "none", addresses that are written to as "out".
  [[nodiscard]] const std::vector<std::string>& Calls() const { return calls_; }
  /// The calls since the last time that this was asked.
  std::vector<std::string> TakeCalls();
  [[nodiscard]] std::size_t CallCount() const { return call_count_; }
  /// The labels of the references that have not been released.
  [[nodiscard]] std::vector<std::string> LiveHandles() const;
  /// What a correct caller never does: use or release a reference after its release, or an unknown one.
  [[nodiscard]] const std::vector<std::string>& Misuses() const { return misuses_; }

  platform::HResult MFStartup(std::int32_t version, std::int32_t flags) override;
  platform::HResult MFShutdown() override;
  platform::HResult MFCreateSourceResolver(platform::InterfaceHandle& out) override;
  platform::HResult MFCreateMFByteStreamOnStream(platform::StreamObject stream,
                                                 platform::InterfaceHandle& out) override;
  platform::HResult MFCreateTopology(platform::InterfaceHandle& out) override;
  platform::HResult MFCreateTopologyNode(std::int32_t type, platform::InterfaceHandle& out) override;
  platform::HResult MFCreateMediaSession(platform::InterfaceHandle& out) override;
  platform::HResult MFCreateAudioRendererActivate(platform::InterfaceHandle& out) override;
  platform::HResult MFCreateVideoRendererActivate(platform::WindowHandle window,
                                                  platform::InterfaceHandle& out) override;
  platform::HResult MFGetService(platform::InterfaceHandle object, const platform::Guid& service,
                                 const platform::Guid& iid, platform::InterfaceHandle& out) override;
  std::optional<platform::HResult> DispCallFunc(platform::InterfaceHandle object,
                                                platform::Interface interface_id, std::int32_t slot,
                                                std::span<const platform::Argument> arguments) override;
  platform::HResult CoCreateInstance(const platform::Guid& clsid, platform::InterfaceHandle outer,
                                     std::int32_t class_context, const platform::Guid& iid,
                                     platform::InterfaceHandle& out) override;

 private:
  /// One reference: its label, its operations, and whether it has been released.
  struct Object {
    std::string label;
    platform::OperationTable table;
    std::map<std::int32_t, std::string> names;
    bool released = false;
  };
  /// Binds an operation and keeps its name for the record.
  template <typename... Arguments, typename Function>
  static void Bind(Object& object, const platform::Operation<Arguments...>& operation, Function function) {
    object.table.Bind(operation, std::move(function));
    object.names[operation.slot] = std::string(operation.name);
  }

  Object& New(const std::string& label, platform::InterfaceHandle& out);
  std::optional<platform::HResult> Run(const std::string& name, const std::string& record,
                                       const std::function<std::optional<platform::HResult>()>& action);
  platform::HResult RunFunction(const std::string& name, const std::string& record,
                                const std::function<platform::HResult()>& action);
  std::string LabelOf(platform::InterfaceHandle handle);
  std::string ArgumentText(const platform::Argument& argument);
  std::string GuidName(const platform::Guid& guid) const;

  void NewResolver(platform::InterfaceHandle& out);
  platform::HResult ResolveObject(std::int32_t* type, platform::InterfaceHandle* out);
  void NewSource(platform::InterfaceHandle& out);
  void NewDescriptor(platform::InterfaceHandle& out);
  platform::HResult NewStreamDescriptor(std::int32_t index, std::int32_t* selected,
                                        platform::InterfaceHandle* out);
  void NewTopologyNode(const std::string& label, platform::InterfaceHandle& out);
  void NewActivation(platform::InterfaceHandle& out);
  void NewSession(platform::InterfaceHandle& out);
  void NewClock(platform::InterfaceHandle& out);
  void NewVolume(platform::InterfaceHandle& out);
  void NewMetadataProvider(platform::InterfaceHandle& out);
  void NewDeviceEnumerator(platform::InterfaceHandle& out);
  void NewSessionManager(platform::InterfaceHandle& out);
  platform::HResult NewSessionControl(std::int32_t index, platform::InterfaceHandle* out);
  void NewSessionControl2(const AudioSession& session, const std::string& suffix,
                          platform::InterfaceHandle& out);
  void NewMeter(platform::InterfaceHandle& out);

  std::map<platform::InterfaceHandle, Object> objects_;
  std::map<std::string, int> made_;
  std::vector<std::string> calls_;
  std::vector<std::string> misuses_;
  std::size_t call_count_ = 0;
  std::size_t taken_ = 0;
  std::uint32_t last_handle_ = 0;
};

}  // namespace test_support
