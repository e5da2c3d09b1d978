#include "ui/users_guide.h"

#include <utility>

#include "app/state/status_sentences.h"

namespace ui {

UsersGuide::UsersGuide(controls::CommandButton& ShowGuide, platform::Shell& shell, app::Notices& notices,
                       platform::Text address)
    : shell_(shell),
      notices_(notices),
      address_(std::move(address)),
      clicked_(ShowGuide.Clicked.Subscribe([this] { Show(); })) {}

void UsersGuide::Show() {
  if (address_.empty()) return notices_.Notify(app::sentences::kNoGuide);
  const bool opened = shell_.ShellExecuteW(0, u"open", address_, u"", u"", platform::kSwShowNormal);
  if (!opened) notices_.Notify(app::sentences::kGuideNotOpened, {address_});
}

}  // namespace ui
