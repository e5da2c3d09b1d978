#include "platform/desktop/texts.h"

#include <QByteArray>

namespace platform::desktop {

QString ForBus(const Text& text) { return QString::fromStdU16String(text.substr(0, text.find(u'\0'))); }

QString FileAddress(const std::string& native_path) {
  const QByteArray encoded = QByteArray::fromStdString(native_path).toPercentEncoding("/");
  return QStringLiteral("file://") + QString::fromLatin1(encoded);
}

}  // namespace platform::desktop
