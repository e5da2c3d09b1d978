#include "platform/desktop/texts.h"

#include <QByteArray>
#include <algorithm>
#include <cstddef>

namespace platform::desktop {
namespace {

// More than any panel shows; titles and names come from servers and from lists that somebody else wrote.
constexpr std::size_t kLongestText = 4096;

}  // namespace

QString ForBus(const Text& text) {
  QString sent = QString::fromStdU16String(text.substr(0, std::min(text.find(u'\0'), kLongestText)));
  std::replace_if(
      sent.begin(), sent.end(), [](QChar unit) { return unit.category() == QChar::Other_Control; },
      QLatin1Char(' '));
  return sent;
}

QString FileAddress(const std::string& native_path) {
  const QByteArray encoded = QByteArray::fromStdString(native_path).toPercentEncoding("/");
  return QStringLiteral("file://") + QString::fromLatin1(encoded);
}

}  // namespace platform::desktop
