#include "platform/qt/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "platform/qt/text.h"

namespace platform::qt {

Text QtClipboard::GetText() { return FromQt(QGuiApplication::clipboard()->text()); }

}  // namespace platform::qt
