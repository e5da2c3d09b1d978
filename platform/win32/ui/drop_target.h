#pragma once
// What is dragged over a window and dropped on it, and what a start of the program was given. Not what is
// done with it.

#include "controls/form.h"
#include "platform/win32/base/handles.h"
#include "platform/win32/ui/message_loop.h"
#include "ports/text.h"

struct IDataObject;
struct IDropTarget;

namespace platform::win32 {

/// What the dragged object offers: files, an address, a text.
[[nodiscard]] controls::DropOffer OfferOf(IDataObject& data);

/// OLE is initialised by whoever creates this; everything given outlives it. The window is asked whether it
/// can use what is dragged; what is dropped is queued as user input is.
class DropTarget final {
 public:
  DropTarget(controls::Form& form, HWND window, Win32MessageLoop& loop);
  ~DropTarget();
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;

  /// As if it had been dropped: an address (it contains "://") or a file's full path. Nothing happens for an
  /// empty argument.
  void Open(const Text& argument);

  [[nodiscard]] bool IsTaken(const controls::DropOffer& offer) const;
  void Take(controls::DropOffer offer);

  /// What the system calls while something is dragged.
  [[nodiscard]] IDropTarget& Object() const { return *target_; }

 private:
  controls::Form& form_;
  HWND window_;
  Win32MessageLoop& loop_;
  IDropTarget* target_;
  Lifetime lifetime_;
};

}  // namespace platform::win32
