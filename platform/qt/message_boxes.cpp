#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

#include "platform/qt/dialog_texts.h"
#include "platform/qt/dialogs.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

constexpr std::uint32_t kButtonBits = 0x0f;
constexpr std::uint32_t kIconBits = 0xf0;
constexpr qsizetype kLongestBoxText = 4000;

/// A box without Cancel that asks for Yes or No cannot be dismissed without an answer.
class AnswerBox final : public QMessageBox {
 public:
  AnswerBox(QWidget* owner, bool needs_answer) : QMessageBox(owner), needs_answer_(needs_answer) {
    if (needs_answer_) setWindowFlag(Qt::WindowCloseButtonHint, false);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (needs_answer_ && event->key() == Qt::Key_Escape) return;
    QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    if (needs_answer_) {
      event->ignore();
      return;
    }
    QMessageBox::closeEvent(event);
  }

 private:
  const bool needs_answer_;
};

QMessageBox::Icon IconOf(std::uint32_t style) {
  switch (style & kIconBits) {
    case kMbIconCritical:
      return QMessageBox::Critical;
    case kMbIconQuestion:
      return QMessageBox::Question;
    case kMbIconExclamation:
      return QMessageBox::Warning;
    case kMbIconInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

QMessageBox::StandardButtons ButtonsOf(std::uint32_t style) {
  switch (style & kButtonBits) {
    case kMbOkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case kMbYesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case kMbYesNo:
      return QMessageBox::Yes | QMessageBox::No;
    default:
      return QMessageBox::Ok;
  }
}

MessageBoxAnswer AnswerOf(const QMessageBox& box, QMessageBox::StandardButtons buttons) {
  const QAbstractButton* clicked = box.clickedButton();
  const auto button =
      clicked != nullptr ? box.standardButton(const_cast<QAbstractButton*>(clicked)) : QMessageBox::NoButton;
  if (button == QMessageBox::Yes) return MessageBoxAnswer::kYes;
  if (button == QMessageBox::Ok) return MessageBoxAnswer::kOk;
  // Dismissed, or the program ends while the box is open: the answer that starts nothing.
  if (buttons.testFlag(QMessageBox::Cancel)) {
    return button == QMessageBox::No ? MessageBoxAnswer::kNo : MessageBoxAnswer::kCancel;
  }
  return buttons.testFlag(QMessageBox::No) ? MessageBoxAnswer::kNo : MessageBoxAnswer::kOk;
}

}  // namespace

QWidget* QtDialogs::Owner() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (main_window_ && main_window_->isVisible()) return main_window_;
  return QApplication::activeWindow();
}

QString QtDialogs::Translated(const char16_t* german) const {
  return ToQt(translated_ ? translated_(german) : Text(german));
}

void QtDialogs::NameButtons(QMessageBox& box) const {
  const std::pair<QMessageBox::StandardButton, const char16_t*> names[] = {
      {QMessageBox::Ok, dialog_texts::kOk},
      {QMessageBox::Cancel, dialog_texts::kCancel},
      {QMessageBox::Yes, dialog_texts::kYes},
      {QMessageBox::No, dialog_texts::kNo}};
  for (const auto& [standard, german] : names) {
    QAbstractButton* const button = box.button(standard);
    if (button == nullptr) continue;
    button->setText(Translated(german));
    // The toolkit's own pictures fit no desktop's icons and no dark colours.
    button->setIcon({});
  }
}

MessageBoxAnswer QtDialogs::MessageBoxW(const Text& text, const Text& caption, std::uint32_t style) {
  const QMessageBox::StandardButtons buttons = ButtonsOf(style);
  const bool needs_answer = buttons == (QMessageBox::Yes | QMessageBox::No);
  AnswerBox box(Owner(), needs_answer);
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(text).left(kLongestBoxText));
  box.setWindowTitle(caption.empty() ? QCoreApplication::applicationName() : WindowTitle(caption));
  box.setIcon(IconOf(style));
  box.setStandardButtons(buttons);
  NameButtons(box);
  box.exec();
  return AnswerOf(box, buttons);
}

}  // namespace platform::qt
