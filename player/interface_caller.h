#pragma once
// Calls operations of platform interfaces for the player, with GUID texts and object creation.
// Not the operations themselves (ports/media_interfaces.h) and not ownership (player/interface_ref.h).

#include <array>
#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "ports/interface_call.h"
#include "ports/property_value.h"
#include "ports/text.h"

namespace player {

using platform::Guid;
using platform::HResult;
using platform::InterfaceHandle;
using platform::Text;
using platform::TextView;

/// The result of a call: what the operation returned, or nothing when it was not called at all (no object,
/// or a call that cannot be made).
using CallResult = std::optional<HResult>;

/// Whether a result is S_OK. A call that was not made counts as S_OK too: an absent object needs no work, and
/// the output stays as it was.
[[nodiscard]] inline bool IsOk(const CallResult& result) {
  return result.value_or(platform::kSOk) == platform::kSOk;
}

/// A value may be passed as an operation's argument when it has exactly its type, or is an address that
/// converts to it. Numbers are never converted: a wrong width would change what the callee reads.
template <typename Given, typename Wanted>
concept ArgumentFor = std::same_as<std::remove_cvref_t<Given>, Wanted> ||
    (std::is_pointer_v<Wanted>&& std::convertible_to<Given, Wanted>);

class InterfaceCaller {
 public:
  InterfaceCaller(platform::InterfaceCalls& calls, platform::PropertyValues& values)
      : calls_(calls), values_(values) {}
  /// Tries once more to release what was left behind.
  ~InterfaceCaller() { ReleaseLeftBehind(); }
  InterfaceCaller(const InterfaceCaller&) = delete;
  InterfaceCaller& operator=(const InterfaceCaller&) = delete;

  /// Calls `operation` of `object` with the arguments in order. An absent object is never called.
  template <typename... Arguments, typename... Given>
  requires(sizeof...(Arguments) == sizeof...(Given)) && (ArgumentFor<Given, Arguments> && ...) CallResult
      CallInterface(InterfaceHandle object, const platform::Operation<Arguments...>& operation,
                    Given... given) {
    if (object == InterfaceHandle::kNone) return std::nullopt;
    const std::array<platform::Argument, sizeof...(Arguments)> list{
        platform::Argument(std::in_place_type<Arguments>, given)...};
    return calls_.DispCallFunc(object, operation.interface_id, operation.slot,
                               std::span<const platform::Argument>(list));
  }

  /// Releases the object and clears the variable; the count that the object answers with is ignored.
  /// The variable keeps its value when the call could not be made. Without an object nothing happens.
  void ReleaseInterface(InterfaceHandle& object);

  /// Takes ownership of an object that the next ReleaseLeftBehind releases.
  void LeaveBehind(InterfaceHandle object);
  void ReleaseLeftBehind();

  /// The GUID that the text names. Only a text of exactly 38 characters is passed to the platform; any other
  /// one, and one that the platform refuses, gives the all-zero GUID.
  Guid GuidFromString(TextView text);

  /// The platform's text of a GUID, "" on failure.
  Text StringFromGuid(const Guid& guid);

  /// Creates an object of a class, in this process, seen through an interface; both are named by GUID texts.
  /// True on S_OK; otherwise `pInterface` stays as it was. The caller releases the object.
  bool CreateInterface(TextView sCLSID, TextView sIID, InterfaceHandle& pInterface);

 private:
  platform::InterfaceCalls& calls_;
  platform::PropertyValues& values_;
  std::vector<InterfaceHandle> left_behind_;
};

}  // namespace player
