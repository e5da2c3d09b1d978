#pragma once
// A class of the system that a test makes up, in place of the request object's: what it answers, and how
// slowly, is the test's. Not for the real one.

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "ports/text.h"

struct tagVARIANT;

namespace test_support {

/// What its objects do. Headers and body are set before an object is made; all is called on the objects'
/// threads.
struct ScriptedAnswers {
  /// For each member that is called or read; false makes that fail.
  using OnCall = std::function<bool(const std::string& member)>;
  void SetOnCall(const OnCall& on_call);
  [[nodiscard]] bool Allows(const std::string& member) const;
  std::atomic<std::int32_t> state = 0;
  platform::Text headers;
  /// The value of "responseBody".
  std::function<void(tagVARIANT&)> body;
  /// How many there are.
  std::atomic<int> objects = 0;

  /// "setOption 2 13056", "open GET http://h/ 1", "send", "abort" ..., without what is only read.
  [[nodiscard]] std::vector<std::string> Calls() const;
  void Note(const std::string& call);

 private:
  mutable std::mutex mutex_;
  OnCall on_call_;
  std::vector<std::string> calls_;
};

/// An array of bytes as the system passes it.
void SetBytes(tagVARIANT& value, const std::string& bytes);

/// Known to the system while it lives, for this program alone.
class ScriptedClass {
 public:
  static constexpr const char16_t* kName = u"Funkhaus.ScriptedRequest";
  explicit ScriptedClass(const std::shared_ptr<ScriptedAnswers>& answers);
  ~ScriptedClass();
  ScriptedClass(const ScriptedClass&) = delete;
  ScriptedClass& operator=(const ScriptedClass&) = delete;
};

}  // namespace test_support
