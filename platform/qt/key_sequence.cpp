#include "platform/qt/key_sequence.h"

namespace platform::qt {

QKeySequence ToQt(const controls::Key& key) {
  if (!key) return {};
  if (key == controls::kEnterKey) return Qt::Key_Return;
  if (key == controls::kEscapeKey) return Qt::Key_Escape;
  if (key == controls::kHelpKey) return Qt::Key_F1;
  const auto letter = static_cast<Qt::Key>(key.character);
  return key.with_control ? QKeySequence(Qt::CTRL | letter) : QKeySequence(letter);
}

QString InBrackets(const controls::Key& key) {
  return key ? QStringLiteral(" (%1)").arg(ToQt(key).toString(QKeySequence::NativeText)) : QString();
}

}  // namespace platform::qt
