#pragma once
// The menu of a station list, which shows the keys beside what they do. Not what its entries do.

#include <QPoint>

#include "app/forms/form1.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/report_view.h"

namespace platform::qt {

/// Opens the menu at a place of the screen and returns at once. An entry stands for the control of the same
/// name: it bears its caption and does what the user's hand on it does; hidden controls have no entry.
void ShowListMenu(app::Form1& form, ReportView& list, QtMessageLoop& loop, const QPoint& place);

}  // namespace platform::qt
