// The record, the faults and the framework's own functions; the objects are in recording_media_objects.cpp.
#include "tests/support/recording_media.h"

#include <type_traits>
#include <variant>

#include "ports/media_interfaces.h"
#include "tests/support/media_guids.h"

namespace test_support {

using platform::Argument;
using platform::Guid;
using platform::HResult;
using platform::InterfaceHandle;
using platform::kENoInterface;
using platform::kSOk;
using platform::Text;

namespace {

std::string Quoted(const Text& text) {
  std::string quoted = "\"";
  for (const char16_t unit : text) quoted += unit < 128 ? static_cast<char>(unit) : '?';
  return quoted + '"';
}

}  // namespace

RecordingMedia::RecordingMedia() { SetMetadata({}); }

void RecordingMedia::SetMetadata(const std::vector<std::pair<Text, Text>>& texts) {
  std::vector<Text> names;
  properties.clear();
  for (const auto& [name, text] : texts) {
    names.push_back(name);
    properties[name] = {platform::PropertyType::kWideString, text};
  }
  property_names = {platform::PropertyType::kWideStringVector, names};
}

std::vector<std::string> RecordingMedia::TakeCalls() {
  std::vector<std::string> fresh(calls_.begin() + static_cast<std::ptrdiff_t>(taken_), calls_.end());
  taken_ = calls_.size();
  return fresh;
}

std::vector<std::string> RecordingMedia::LiveHandles() const {
  std::vector<std::string> live;
  for (const auto& [handle, object] : objects_) {
    if (!object.released) live.push_back(object.label);
  }
  return live;
}

RecordingMedia::Object& RecordingMedia::New(const std::string& label, InterfaceHandle& out) {
  const int number = ++made_[label];
  out = InterfaceHandle{++last_handle_};
  Object& object = objects_[out];
  object.label = number == 1 ? label : label + "#" + std::to_string(number);
  object.names[platform::IUnknown::Release.slot] = std::string(platform::IUnknown::Release.name);
  return object;
}

std::optional<HResult> RecordingMedia::Run(const std::string& name, const std::string& record,
                                           const std::function<std::optional<HResult>()>& action) {
  calls_.push_back(record);
  const std::size_t number = ++call_count_;
  if (on_call) on_call(record);
  std::optional<Fault> wrong;
  if (const auto named = faults.find(name); named != faults.end()) wrong = named->second;
  if (number == fault_at) wrong = fault;
  if (!wrong) return action();
  // Giving a reference back cannot fail: what a release answers with is the number of those that are left.
  const bool is_release = name == platform::IUnknown::Release.name;
  if (is_release && wrong->has_value()) action();
  return *wrong;
}

HResult RecordingMedia::RunFunction(const std::string& name, const std::string& record,
                                    const std::function<HResult()>& action) {
  std::optional<HResult> made;
  const auto result = Run(name, name + record, [&]() -> std::optional<HResult> { return made = action(); });
  if (result) return *result;
  return made ? *made : action();
}

std::string RecordingMedia::LabelOf(InterfaceHandle handle) {
  if (handle == InterfaceHandle::kNone) return "none";
  const auto found = objects_.find(handle);
  if (found == objects_.end()) {
    misuses_.push_back("unknown handle");
    return "unknown";
  }
  if (found->second.released) misuses_.push_back("use of released " + found->second.label);
  return found->second.label;
}

std::string RecordingMedia::GuidName(const Guid& guid) const {
  for (const auto& [name, known] : media_guids::kNames) {
    if (known == guid) return std::string(name);
  }
  return guid == Guid{} ? "zero GUID" : "unknown GUID";
}

std::string RecordingMedia::ArgumentText(const Argument& argument) {
  return std::visit(
      [this](const auto& value) -> std::string {
        using Value = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_arithmetic_v<Value>) {
          return std::to_string(value);
        } else if constexpr (std::is_same_v<Value, InterfaceHandle>) {
          return LabelOf(value);
        } else if constexpr (std::is_same_v<Value, const Guid*>) {
          return value ? GuidName(*value) : "none";
        } else if constexpr (std::is_same_v<Value, const Text*>) {
          return value ? Quoted(*value) : "none";
        } else {
          return value ? "out" : "none";
        }
      },
      argument);
}

std::optional<HResult> RecordingMedia::DispCallFunc(InterfaceHandle handle, platform::Interface interface_id,
                                                    std::int32_t slot, std::span<const Argument> arguments) {
  if (handle == InterfaceHandle::kNone) misuses_.emplace_back("call of an absent object");
  const std::string label = LabelOf(handle);
  const auto found = objects_.find(handle);
  if (found == objects_.end()) return std::nullopt;
  const auto name = found->second.names.find(slot);
  const bool known = name != found->second.names.end();
  const std::string full_name = known ? name->second : "slot " + std::to_string(slot);
  const std::size_t colons = full_name.rfind(':');
  std::string record = label + "." + full_name.substr(colons == std::string::npos ? 0 : colons + 1) + "(";
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    record += (i == 0 ? "" : ", ") + ArgumentText(arguments[i]);
  }
  return Run(full_name, record + ")", [&, this]() -> std::optional<HResult> {
    Object& object = objects_.at(handle);
    if (object.released) return std::nullopt;
    if (interface_id != platform::Interface::kUnknown || slot != platform::IUnknown::Release.slot) {
      const auto result = object.table.Call(interface_id, slot, arguments);
      if (!result) misuses_.push_back("impossible call " + record + ")");
      return result;
    }
    object.released = true;
    return kSOk;
  });
}

HResult RecordingMedia::MFStartup(std::int32_t version, std::int32_t flags) {
  return RunFunction("MFStartup", "(" + std::to_string(version) + ", " + std::to_string(flags) + ")",
                     [] { return kSOk; });
}

HResult RecordingMedia::MFShutdown() {
  return RunFunction("MFShutdown", "()", [] { return kSOk; });
}

HResult RecordingMedia::MFCreateSourceResolver(InterfaceHandle& out) {
  return RunFunction("MFCreateSourceResolver", "()", [&] {
    NewResolver(out);
    return kSOk;
  });
}

HResult RecordingMedia::MFCreateMFByteStreamOnStream(platform::StreamObject stream, InterfaceHandle& out) {
  const auto number = static_cast<std::uint32_t>(stream);
  return RunFunction("MFCreateMFByteStreamOnStream", "(" + std::to_string(number) + ")", [&] {
    New("byte stream", out);
    return kSOk;
  });
}

HResult RecordingMedia::MFCreateTopology(InterfaceHandle& out) {
  return RunFunction("MFCreateTopology", "()", [&] {
    Bind(New("topology", out), platform::IMFTopology::AddNode, [](InterfaceHandle) { return kSOk; });
    return kSOk;
  });
}

HResult RecordingMedia::MFCreateTopologyNode(std::int32_t type, InterfaceHandle& out) {
  return RunFunction("MFCreateTopologyNode", "(" + std::to_string(type) + ")", [&] {
    NewTopologyNode(type == platform::kMfTopologyOutputNode ? "output node" : "source node", out);
    return kSOk;
  });
}

HResult RecordingMedia::MFCreateMediaSession(InterfaceHandle& out) {
  return RunFunction("MFCreateMediaSession", "()", [&] {
    NewSession(out);
    return kSOk;
  });
}

HResult RecordingMedia::MFCreateAudioRendererActivate(InterfaceHandle& out) {
  return RunFunction("MFCreateAudioRendererActivate", "()", [&] {
    NewActivation(out);
    return kSOk;
  });
}

HResult RecordingMedia::MFCreateVideoRendererActivate(platform::WindowHandle window, InterfaceHandle& out) {
  const auto number = static_cast<std::uint32_t>(window);
  return RunFunction("MFCreateVideoRendererActivate", "(" + std::to_string(number) + ")", [&] {
    NewActivation(out);
    return kSOk;
  });
}

HResult RecordingMedia::MFGetService(InterfaceHandle object, const Guid& service, const Guid& iid,
                                     InterfaceHandle& out) {
  const std::string record = "(" + LabelOf(object) + ", " + GuidName(service) + ", " + GuidName(iid) + ")";
  return RunFunction("MFGetService", record, [&] {
    const bool volume_asked =
        service == media_guids::kVolumeService && iid == media_guids::kSimpleAudioVolume;
    const bool metadata_asked =
        service == media_guids::kMetadataService && iid == media_guids::kMetadataProvider;
    if (volume_asked && has_volume) {
      NewVolume(out);
    } else if (metadata_asked && has_metadata) {
      NewMetadataProvider(out);
    } else {
      return kUnsupportedService;
    }
    return kSOk;
  });
}

HResult RecordingMedia::CoCreateInstance(const Guid& clsid, InterfaceHandle outer, std::int32_t class_context,
                                         const Guid& iid, InterfaceHandle& out) {
  const std::string record = "(" + GuidName(clsid) + ", " + LabelOf(outer) + ", " +
                             std::to_string(class_context) + ", " + GuidName(iid) + ")";
  return RunFunction("CoCreateInstance", record, [&] {
    if (clsid != media_guids::kDeviceEnumeratorClass) return kClassNotRegistered;
    if (iid != media_guids::kDeviceEnumerator) return kENoInterface;
    NewDeviceEnumerator(out);
    return kSOk;
  });
}

}  // namespace test_support
