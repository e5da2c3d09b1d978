#include "platform/front/typed_text.h"

namespace platform::front {

bool TypedText::ProgramWrote() {
  if (control_.GetText() == known_) return false;
  known_ = control_.GetText();
  ++basis_;
  return true;
}

void TypedText::Take(int basis, const controls::Text& typed, const std::function<void()>& write) {
  if (basis != basis_) return;
  known_ = typed;
  write();
}

}  // namespace platform::front
