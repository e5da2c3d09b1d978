#include "platform/qt/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "platform/qt/text.h"

namespace platform::qt {

Text QtClipboard::GetText() { return FromQt(QGuiApplication::clipboard()->text()); }

void QtClipboard::SetText(const Text& text) { QGuiApplication::clipboard()->setText(ToQt(text)); }

}  // namespace platform::qt
