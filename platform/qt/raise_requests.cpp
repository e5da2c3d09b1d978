#include "platform/qt/raise_requests.h"

#include <utility>

#include "platform/qt/front.h"

namespace platform::qt {

RaiseRequests::RaiseRequests(StartRequests& requests, const controls::Form& form, QWidget& window,
                             std::function<void(const std::string&)> open)
    : requests_(requests), form_(form), window_(window), open_(std::move(open)) {
  if (requests_.Descriptor() < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(requests_.Descriptor(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { Serve(); });
}

RaiseRequests::~RaiseRequests() = default;

void RaiseRequests::Serve() {
  while (const auto request = requests_.Next()) {
    QWidget* const front = Front();
    if (front == nullptr || (form_.Closing() && !request->argument.empty())) continue;
    BringToFront(window_, *front, request->activation_token);
    requests_.Accept();
    if (open_ && !request->argument.empty()) open_(request->argument);
  }
}

QWidget* RaiseRequests::Front() const {
  QWidget* const front = FrontOf(window_);
  return front == &window_ && form_.Closing() ? nullptr : front;
}

}  // namespace platform::qt
