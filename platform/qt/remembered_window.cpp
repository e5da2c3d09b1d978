#include "platform/qt/remembered_window.h"

#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>
#include <QScreen>
#include <utility>

namespace platform::qt {
namespace {

/// Size and state of a window come in several events; before this time is over they may contradict each
/// other.
constexpr int kWindowRestMilliseconds = 200;

/// The main one first.
std::vector<app::ScreenRoom> Screens() {
  std::vector<app::ScreenRoom> rooms;
  const auto add = [&rooms](const QScreen& screen) {
    const QRect room = screen.availableGeometry();
    rooms.push_back({room.left(), room.top(), room.width(), room.height()});
  };
  const QScreen* const main_screen = QGuiApplication::primaryScreen();
  if (main_screen != nullptr) add(*main_screen);
  for (const QScreen* screen : QGuiApplication::screens()) {
    if (screen != main_screen) add(*screen);
  }
  return rooms;
}

}  // namespace

RememberedWindow::RememberedWindow(controls::Form& form, const app::Inventory& inventory, QWidget& window,
                                   QString file)
    : inventory_(inventory), window_(window), file_(std::move(file)), in_file_(ReadFile()) {
  memory_ = app::ParseWindowMemory(in_file_).value_or(app::WindowMemory());
  app::RestoreColumns(inventory_, memory_.columns);
  rest_.setSingleShot(true);
  rest_.setInterval(kWindowRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, [this] { TakePlace(); });
  window_.installEventFilter(this);
  subscriptions_ += form.QueryUnload.Subscribe([this] { Save(); });
  // When it has closed it is hidden already.
  subscriptions_ += form.Unloaded.Subscribe([this] { Save(); });
}

void RememberedWindow::Restore() {
  if (memory_.place) {
    const app::WindowPlace place =
        app::PlaceOnAScreen(*memory_.place, Screens(), {kWindowBorders.width(), kWindowBorders.height()});
    window_.resize(QSize(place.width, place.height).expandedTo(window_.minimumSize()));
    window_.move(place.left, place.top);
  }
  if (memory_.maximized) window_.setWindowState(window_.windowState() | Qt::WindowMaximized);
}

bool RememberedWindow::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::WindowStateChange:
      rest_.start();
      break;
    default:
      break;
  }
  return false;
}

void RememberedWindow::TakePlace() {
  rest_.stop();
  if (!window_.isVisible() || window_.isMinimized()) return;
  memory_.maximized = window_.isMaximized();
  if (memory_.maximized || window_.isFullScreen()) return;
  memory_.place = {window_.x(), window_.y(), window_.width(), window_.height()};
}

void RememberedWindow::Save() {
  if (rest_.isActive()) TakePlace();
  memory_.columns = app::UsersColumns(inventory_);
  const std::string bytes = app::FormatWindowMemory(memory_);
  if (bytes == in_file_) return;
  QSaveFile file(file_);
  if (!file.open(QIODevice::WriteOnly)) return;
  file.write(QByteArray::fromStdString(bytes));
  if (file.commit()) in_file_ = bytes;
}

std::string RememberedWindow::ReadFile() const {
  // Opening anything else may wait for somebody.
  if (!QFileInfo(file_).isFile()) return {};
  QFile file(file_);
  if (!file.open(QIODevice::ReadOnly)) return {};
  // Longer ones are recognised by one byte more.
  return file.read(static_cast<qint64>(app::kLongestWindowMemory) + 1).toStdString();
}

}  // namespace platform::qt
