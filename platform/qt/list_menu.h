#pragma once
// The menu of a list, which shows the keys next to what they do. Not what its entries do.

#include <QPoint>

#include "app/forms/form_control.h"
#include "platform/qt/list_binding.h"
#include "platform/qt/message_loop.h"

namespace platform::qt {

/// Opens the menu for the selected row at a place on the screen and returns at once. The inventory says which
/// controls have an entry. While the menu is open its entries follow their controls and the row, and what is
/// chosen is done with that row, whichever is selected by then.
void ShowListMenu(const app::Inventory& inventory, ListBinding& list, QtMessageLoop& loop,
                  const QPoint& place);

}  // namespace platform::qt
