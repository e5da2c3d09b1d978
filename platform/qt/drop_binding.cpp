#include "platform/qt/drop_binding.h"

#include <QDropEvent>
#include <QUrl>
#include <utility>

#include "platform/qt/input_binding.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

// Far more than the longest address; whatever else is dropped as text only gets its beginning shown.
constexpr qsizetype kLongestDroppedText = 65'536;

bool IsOfThisMachine(const QUrl& url) {
  return url.isLocalFile() && (url.host().isEmpty() || url.host() == QLatin1String("localhost"));
}

/// A name's bytes as they are; the toolkit's own way goes by text, which not every name is.
std::string NativePath(const QUrl& url) {
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

}  // namespace

DropBinding::DropBinding(controls::Form& form, QWidget& window, QtMessageLoop& loop, NativePaths& paths)
    : form_(form), window_(window), loop_(loop), paths_(paths) {
  window_.setAcceptDrops(true);
  window_.installEventFilter(this);
}

void DropBinding::Open(const std::string& argument) {
  if (argument.empty()) return;
  controls::DropOffer offer;
  if (argument.find("://") != std::string::npos) {
    offer.addresses.push_back(FromQt(QString::fromStdString(argument)));
  } else {
    offer.files.push_back(paths_.FromNative(argument));
  }
  HandOver(std::move(offer));
}

bool DropBinding::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &window_) return false;
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
      Consider(*static_cast<QDropEvent*>(event));
      return true;
    case QEvent::Drop:
      Take(*static_cast<QDropEvent*>(event));
      return true;
    default:
      return false;
  }
}

bool DropBinding::IsTaken(const QDropEvent& event) const {
  // A mere move would have the giver delete what it gave.
  const bool gives_copy = event.possibleActions().testAnyFlags(Qt::CopyAction | Qt::LinkAction);
  return gives_copy && !IsBlockedByDialog(window_) && !form_.Closing() && form_.Accepts &&
         form_.Accepts(OfferOf(*event.mimeData()));
}

void DropBinding::Consider(QDropEvent& event) const {
  if (!IsTaken(event)) {
    event.ignore();
    return;
  }
  event.setDropAction(event.possibleActions().testFlag(Qt::CopyAction) ? Qt::CopyAction : Qt::LinkAction);
  event.accept();
}

void DropBinding::Take(QDropEvent& event) {
  Consider(event);
  if (event.isAccepted()) HandOver(OfferOf(*event.mimeData()));
}

void DropBinding::HandOver(controls::DropOffer offer) {
  loop_.HandOver(*this, [this, offer = std::move(offer)] {
    (IsBlockedByDialog(window_) ? form_.DroppedUnderDialog : form_.Dropped).Raise(offer);
  });
}

controls::DropOffer DropBinding::OfferOf(const QMimeData& data) const {
  controls::DropOffer offer;
  for (const QUrl& url : data.urls()) {
    if (IsOfThisMachine(url)) {
      offer.files.push_back(paths_.FromNative(NativePath(url)));
    } else {
      offer.addresses.push_back(FromQt(url.toString(QUrl::FullyEncoded)));
    }
  }
  if (data.hasText()) offer.text = FromQt(data.text().left(kLongestDroppedText));
  return offer;
}

}  // namespace platform::qt
