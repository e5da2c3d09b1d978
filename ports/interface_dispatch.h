#pragma once
// No port: the answering side of a call by slot, which binds typed operations to functions and checks
// arguments. Not for callers; they use the operations of ports/media_interfaces.h through DispCallFunc.

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <tuple>
#include <utility>
#include <variant>

#include "ports/interface_call.h"

namespace platform {

/// The operation table of one object: what each slot does. A slot that was not bound for that interface, and
/// an argument list of other length or types than the operation's, make the call impossible (nothing is
/// returned).
class OperationTable {
 public:
  /// Binds `function`, callable with the operation's argument types and returning an HResult.
  template <typename... Arguments, typename Function>
  void Bind(const Operation<Arguments...>& operation, Function function) {
    entries_[{operation.interface_id, operation.slot}] =
        [call = std::move(function)](std::span<const Argument> list) {
          return Invoke<Arguments...>(call, list, std::index_sequence_for<Arguments...>{});
        };
  }

  [[nodiscard]] std::optional<HResult> Call(Interface interface_id, std::int32_t slot,
                                            std::span<const Argument> list) const {
    const auto entry = entries_.find({interface_id, slot});
    if (entry == entries_.end()) return std::nullopt;
    return entry->second(list);
  }

 private:
  template <typename... Arguments, typename Function, std::size_t... Index>
  static std::optional<HResult> Invoke(const Function& call, std::span<const Argument> list,
                                       std::index_sequence<Index...>) {
    if (list.size() != sizeof...(Arguments)) return std::nullopt;
    if (!(std::holds_alternative<Arguments>(list[Index]) && ...)) return std::nullopt;
    return call(std::get<Arguments>(list[Index])...);
  }

  using Entry = std::function<std::optional<HResult>(std::span<const Argument>)>;
  std::map<std::pair<Interface, std::int32_t>, Entry> entries_;
};

}  // namespace platform
