#include "platform/win32/media/marshaller.h"

#include "platform/win32/base/windows_api.h"

#include <oleauto.h>
#include <propidl.h>
#include <unknwn.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <functional>
#include <vector>

#include "platform/win32/base/wide.h"
#include "platform/win32/media/property_variant.h"

namespace platform::win32 {
namespace {

/// A sound format counts its channels in 16 bits.
constexpr std::int32_t kMostElements = 65535;

/// What one argument needs during the call, and afterwards on success.
struct Slot {
  std::int32_t number = 0;
  std::int64_t long_number = 0;
  GUID guid{};
  std::vector<float> floats;
  ComPointer<::IUnknown> passed;
  ::IUnknown* received = nullptr;
  PROPVARIANT value{};
  std::function<void()> write_back;
};

/// The arguments of one call in the system's form.
class Call {
 public:
  Call(HandleTable& table, const OperationShape& shape, std::span<const Argument> arguments)
      : table_(table), shape_(shape), arguments_(arguments) {}
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;
  ~Call() {
    for (Slot& slot : slots_) PropVariantClear(&slot.value);
  }

  /// False when an argument cannot be passed.
  bool Prepare() {
    for (at_ = 0; at_ < arguments_.size(); ++at_) {
      if (!std::visit(*this, arguments_[at_])) return false;
    }
    return true;
  }

  std::optional<HResult> Invoke(::IUnknown* object) {
    std::array<VARTYPE, kMostArguments> types{};
    std::array<VARIANTARG*, kMostArguments> values{};
    for (std::size_t at = 0; at < arguments_.size(); ++at) {
      types[at] = passed_[at].vt;
      values[at] = &passed_[at];
    }
    VARIANT answer{};
    const auto offset = static_cast<ULONG_PTR>(shape_.slot) * sizeof(void*);
    const HRESULT called =
        ::DispCallFunc(object, offset, CC_STDCALL, VT_I4, static_cast<UINT>(arguments_.size()), types.data(),
                       values.data(), &answer);
    if (called != S_OK) return std::nullopt;
    return answer.lVal;
  }

  /// Gives the caller what the operation wrote; nothing of it on failure.
  void Finish(HResult result) {
    for (std::size_t at = 0; at < arguments_.size(); ++at) {
      Slot& slot = slots_[at];
      if (result == kSOk && slot.write_back) slot.write_back();
      // A success of another kind counts as failure, but what came with it is the caller's all the same.
      if (result > kSOk && slot.received != nullptr) slot.received->Release();
    }
  }

  bool operator()(std::int32_t number) {
    passed_[at_].vt = VT_I4;
    passed_[at_].lVal = number;
    return true;
  }
  bool operator()(float number) {
    passed_[at_].vt = VT_R4;
    passed_[at_].fltVal = number;
    return true;
  }
  bool operator()(const Text* text) { return Pass(text == nullptr ? nullptr : Wide(*text)); }
  bool operator()(const Guid* guid) {
    if (guid == nullptr) return Pass(nullptr);
    slots_[at_].guid = std::bit_cast<GUID>(*guid);
    iid_ = guid;
    return Pass(&slots_[at_].guid);
  }
  bool operator()(InterfaceHandle handle) {
    const Interface wanted = NextInterface();
    if (handle == InterfaceHandle::kNone) return Pass(nullptr);
    auto view = table_.Find(handle);
    if (!view) return false;
    Slot& slot = slots_[at_];
    slot.passed = std::move(view->object);
    if (wanted == Interface::kUnknown || wanted == view->interface_id) return Pass(slot.passed.Get());
    ComPointer<::IUnknown> other;
    const GUID iid = std::bit_cast<GUID>(IidOf(wanted));
    if (slot.passed->QueryInterface(iid, other.ReceiveAny()) != S_OK) return false;
    slot.passed = std::move(other);
    return Pass(slot.passed.Get());
  }

  bool operator()(std::int32_t* number) { return PassVariable(number, &Slot::number); }
  bool operator()(std::int64_t* number) { return PassVariable(number, &Slot::long_number); }
  bool operator()(Guid* guid) {
    if (guid == nullptr) return Pass(nullptr);
    Slot& slot = slots_[at_];
    slot.guid = std::bit_cast<GUID>(*guid);
    slot.write_back = [&slot, guid] { *guid = std::bit_cast<Guid>(slot.guid); };
    return Pass(&slot.guid);
  }
  /// As many floats as the number before it says, else one.
  bool operator()(float* numbers) {
    if (numbers == nullptr) return Pass(nullptr);
    const auto* counted = at_ == 0 ? nullptr : std::get_if<std::int32_t>(&arguments_[at_ - 1]);
    const std::int32_t count = counted == nullptr ? 1 : *counted;
    if (count < 1 || count > kMostElements) return false;
    Slot& slot = slots_[at_];
    slot.floats.assign(numbers, numbers + count);
    slot.write_back = [&slot, numbers] { std::copy(slot.floats.begin(), slot.floats.end(), numbers); };
    return Pass(slot.floats.data());
  }
  bool operator()(InterfaceHandle* out) {
    const Interface declared = NextInterface();
    if (out == nullptr) return Pass(nullptr);
    Slot& slot = slots_[at_];
    slot.write_back = [this, &slot, out, declared] {
      const bool named = declared == Interface::kUnknown && iid_ != nullptr;
      const Interface seen = named ? InterfaceOf(*iid_).value_or(Interface::kUnknown) : declared;
      *out = table_.Enter(slot.received, seen);
    };
    return Pass(&slot.received);
  }
  bool operator()(PropertyValue* value) {
    if (value == nullptr) return Pass(nullptr);
    Slot& slot = slots_[at_];
    if (shape_.values == ValueDirection::kIn) return MakeVariant(*value, slot.value) && Pass(&slot.value);
    slot.write_back = [&slot, value] {
      // A type that the program knows nothing of is no text either.
      if (!ReadVariant(slot.value, *value)) *value = PropertyValue{};
    };
    return Pass(&slot.value);
  }

 private:
  bool Pass(const void* pointer) {
    passed_[at_].vt = VT_I8;
    passed_[at_].llVal = std::bit_cast<LONGLONG>(pointer);
    return true;
  }
  template <typename Number>
  bool PassVariable(Number* number, Number Slot::*member) {
    if (number == nullptr) return Pass(nullptr);
    Slot& slot = slots_[at_];
    slot.*member = *number;
    slot.write_back = [&slot, number, member] { *number = slot.*member; };
    return Pass(&(slot.*member));
  }
  Interface NextInterface() { return shape_.handles.at(next_handle_++); }

  HandleTable& table_;
  const OperationShape& shape_;
  const std::span<const Argument> arguments_;
  std::array<Slot, kMostArguments> slots_;
  std::array<VARIANTARG, kMostArguments> passed_{};
  const Guid* iid_ = nullptr;
  std::size_t at_ = 0;
  std::size_t next_handle_ = 0;
};

}  // namespace

std::optional<HResult> CallOperation(HandleTable& table, ::IUnknown* object, const OperationShape& shape,
                                     std::span<const Argument> arguments) {
  if (!Matches(shape, arguments)) return std::nullopt;
  Call call(table, shape, arguments);
  if (!call.Prepare()) return kEInvalidArg;
  const auto result = call.Invoke(object);
  if (result) call.Finish(*result);
  return result;
}

}  // namespace platform::win32
