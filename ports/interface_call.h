#pragma once
// Port: the dynamic call of a platform interface's operation by its slot, with handles and argument lists.
// Not the operations themselves; those are listed in ports/media_interfaces.h.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

#include "ports/property_value.h"
#include "ports/text.h"

namespace platform {

/// An operation's result; zero is S_OK, everything else counts as failure.
using HResult = std::int32_t;

inline constexpr HResult kSOk = 0;
inline constexpr HResult kENoInterface = static_cast<HResult>(0x80004002u);
inline constexpr HResult kEFail = static_cast<HResult>(0x80004005u);
inline constexpr HResult kEInvalidArg = static_cast<HResult>(0x80070057u);
inline constexpr HResult kErrorFileNotFound = static_cast<HResult>(0x80070002u);
inline constexpr HResult kErrorCancelled = static_cast<HResult>(0x800704C7u);
inline constexpr HResult kMfEUnsupportedByteStreamType = static_cast<HResult>(0xC00D36C4u);

/// A reference to a platform object; zero when absent. Released by slot 2 (IUnknown Release).
enum class InterfaceHandle : std::uint32_t { kNone = 0 };

/// The interfaces whose operations the program calls.
enum class Interface : std::uint8_t {
  kUnknown,
  kSourceResolver,
  kMediaSource,
  kPresentationDescriptor,
  kStreamDescriptor,
  kMediaTypeHandler,
  kTopologyNode,
  kTopology,
  kActivate,
  kMediaSession,
  kClock,
  kSimpleAudioVolume,
  kMetadataProvider,
  kMetadata,
  kMMDeviceEnumerator,
  kMMDevice,
  kAudioSessionManager2,
  kAudioSessionEnumerator,
  kAudioSessionControl,
  kAudioSessionControl2,
  kAudioMeterInformation,
};

/// One argument: a value, or the address of a variable that the operation reads or writes.
using Argument = std::variant<std::int32_t, float, InterfaceHandle, const Guid*, const Text*, std::int32_t*,
                              float*, std::int64_t*, InterfaceHandle*, Guid*, PropertyValue*>;

/// The longest argument list of a call.
inline constexpr std::size_t kMostArguments = 11;

/// One operation of one interface, described once: its slot (0 = QueryInterface) and, as the template's
/// arguments, the types of its argument list.
template <typename... Arguments>
struct Operation {
  static_assert(sizeof...(Arguments) <= kMostArguments);
  Interface interface_id;
  std::int32_t slot;
  std::string_view name;
};

/// The dynamic call of an operation, and the creation of objects by class.
class InterfaceCalls {
 public:
  virtual ~InterfaceCalls() = default;

  /// Invokes operation `slot` of the object's table, which must be that of interface `interface_id` (every
  /// table begins with kUnknown's operations). Nothing when the call itself cannot be made: an unknown
  /// handle, one through which another interface is seen, no such slot, or arguments of other types than the
  /// operation's.
  virtual std::optional<HResult> DispCallFunc(InterfaceHandle object, Interface interface_id,
                                              std::int32_t slot, std::span<const Argument> arguments) = 0;

  /// A new object of class `clsid`, seen through interface `iid`. `out` is written on S_OK only.
  virtual HResult CoCreateInstance(const Guid& clsid, InterfaceHandle outer, std::int32_t class_context,
                                   const Guid& iid, InterfaceHandle& out) = 0;
};

inline constexpr std::int32_t kClsctxInprocServer = 1;
inline constexpr std::int32_t kClsctxAll = 23;

}  // namespace platform
