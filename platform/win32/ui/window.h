#pragma once
// A window of the program's own kind: top-level windows and the containers in them. Not the system's controls
// (control_binding.h).

#include <cstdint>
#include <optional>

#include "platform/win32/base/handles.h"
#include "ports/text.h"

struct tagNMHDR;
struct tagDRAWITEMSTRUCT;

namespace platform::win32 {

/// A message as the system gives it to a window.
struct Message {
  unsigned int id = 0;
  std::uintptr_t w = 0;
  std::intptr_t l = 0;
};

/// True while an open dialog blocks input to the window that contains this one. What was queued before the
/// dialog opened and has its turn inside it is dropped by whoever queued it.
[[nodiscard]] bool IsBlockedByDialog(HWND window);

/// What the system's controls report to their container comes back to whoever binds the control.
class Reflected {
 public:
  virtual ~Reflected() = default;
  virtual void Notice(unsigned int /*code*/) {}
  virtual std::intptr_t Notice(tagNMHDR& /*notice*/) { return 0; }
  virtual void Scrolled(unsigned int /*code*/) {}
  virtual void Draw(const tagDRAWITEMSTRUCT& /*place*/) {}
  /// A right click or the menu key; the place on the screen, -1 by the key.
  virtual void ContextWanted(int /*left*/, int /*top*/) {}

  /// Called by Attach's owner before the control is gone.
  static void Attach(HWND control, Reflected* receiver);
};

class Window {
 public:
  struct Style {
    std::uint32_t style = 0;
    std::uint32_t extended = 0;
  };
  Window(HWND parent, Style style, const Text& title);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  [[nodiscard]] HWND Handle() const { return handle_; }

  /// Called by the system's procedure. Nothing: the system's own handling follows.
  std::optional<std::intptr_t> Receive(const Message& message);

 protected:
  /// As Receive, for what is left when the controls have had their reports.
  virtual std::optional<std::intptr_t> OnMessage(const Message& message) = 0;
  /// The ground on which the container and what is transparent on it are painted: a system colour's number.
  [[nodiscard]] virtual int Ground() const;

 private:
  [[nodiscard]] std::optional<std::intptr_t> Reflect(const Message& message) const;

  HWND handle_ = nullptr;
};

}  // namespace platform::win32
