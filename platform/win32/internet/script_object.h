#pragma once
// An object of the system that is called by the names of its members, as scripts do. Not for any one object.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "ports/text.h"

struct IDispatch;

namespace platform::win32 {

/// What a member takes and gives: nothing, a number, a truth value, a text, bytes.
using ScriptValue = std::variant<std::monostate, std::int32_t, bool, Text, std::string>;

/// All members are called on the thread that created the object, whose COM is initialised.
class ScriptObject {
 public:
  /// Whether the system knows a class of that name.
  static bool IsKnown(const Text& class_name);

  /// Without the class every call fails.
  explicit ScriptObject(const Text& class_name);
  ~ScriptObject();
  ScriptObject(const ScriptObject&) = delete;
  ScriptObject& operator=(const ScriptObject&) = delete;

  /// Calls a method; nothing when that failed. Numbers, truth values and texts can be given.
  std::optional<ScriptValue> Call(const Text& name, const std::vector<ScriptValue>& arguments = {});
  /// A property's value; nothing when that failed.
  std::optional<ScriptValue> Get(const Text& name);

 private:
  std::optional<ScriptValue> Invoke(const Text& name, unsigned short kind,
                                    const std::vector<ScriptValue>& arguments);
  ::IDispatch* object_ = nullptr;
};

}  // namespace platform::win32
