#include "platform/qt/list_binding.h"

#include <QHeaderView>
#include <functional>

#include "platform/qt/text.h"

namespace platform::qt {
namespace {

constexpr int kRestMilliseconds = 250;

}  // namespace

ListBinding::ListBinding(controls::ListView& list, ReportView& view, const TwipScale& scale,
                         const QtIcons& icons, const QtMessageLoop& loop)
    : WidgetBinding(list, view, scale),
      list_(list),
      view_(view),
      hint_(*new EmptyHint(view)),
      loop_(loop),
      model_(list, icons) {
  view_.setModel(&model_);
  rest_.setSingleShot(true);
  subscriptions_ += list.Changed.Subscribe([this] { Follow(); });
  subscriptions_ += list.RowsReset.Subscribe([this] { FollowRowsBy([this] { model_.TakeAllRows(); }); });
  subscriptions_ += list.RowsAdded.Subscribe([this](std::size_t first, std::size_t count) {
    FollowRowsBy([&] { model_.TakeAddedRows(first, count); });
  });
  subscriptions_ += list.RowRemoved.Subscribe(
      [this](std::size_t position) { FollowRowsBy([&] { model_.TakeRemovedRow(position); }); });
  subscriptions_ +=
      list.RowChanged.Subscribe([this](std::size_t position) { model_.TakeChangedRow(position); });
  subscriptions_ += list.ScrollWanted.Subscribe([this](controls::RowId id) {
    if (const auto position = list_.IndexOf(id)) view_.ScrollTo(static_cast<int>(*position));
  });
  BindUser();
  FollowColumnWidths();
  FollowSorting();
  Follow();
}

ListBinding::~ListBinding() {
  following_ = true;
  view_.setModel(nullptr);
}

void ListBinding::BindUser() {
  QObject::connect(view_.header(), &QHeaderView::sectionClicked, &context_, [this](int column) {
    list_.ClickHeader(column);
    FollowSorting();
  });
  QObject::connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, &context_, [this] {
    // A change that no gesture announces comes from a screen reader.
    if (!following_) rest_.start(kRestMilliseconds);
  });
  QObject::connect(&rest_, &QTimer::timeout, &context_, [this] {
    if (loop_.PaintingOnly()) {
      rest_.start(kRestMilliseconds);
    } else {
      TakeSelection();
    }
  });
  subscriptions_ += view_.UserMoved.Subscribe([this](ReportView::Movement how) { TakeMovement(how); });
  subscriptions_ += view_.EnterPressed.Subscribe([this] {
    const auto row = view_.SelectedRow();
    if (row) TakeDoubleClick(*row);
  });
  subscriptions_ += view_.DeletePressed.Subscribe([this] { TakeDelete(); });
  subscriptions_ += view_.SelectedRowPressed.Subscribe([this](int row) {
    rest_.stop();
    list_.ClickRow(list_.RowAt(static_cast<std::size_t>(row)));
  });
  subscriptions_ += view_.RowDoubleClicked.Subscribe([this](int row) { TakeDoubleClick(row); });
}

void ListBinding::TakeMovement(ReportView::Movement movement) {
  if (movement == ReportView::Movement::kMoving) {
    rest_.start(kRestMilliseconds);
  } else {
    TakeSelection();
  }
}

void ListBinding::TakeSelection() {
  rest_.stop();
  const controls::RowId id = ShownSelection();
  if (id != list_.SelectedRow()) list_.Select(id);
}

controls::RowId ListBinding::ShownSelection() const {
  const auto row = view_.SelectedRow();
  return row ? list_.RowAt(static_cast<std::size_t>(*row)) : controls::RowId::kNone;
}

void ListBinding::TakeDelete() {
  // The list may not know yet which row is shown selected, and taking it over may take so long that the user
  // selects another one meanwhile: only the row that the key was pressed for is deleted.
  const controls::RowId id = ShownSelection();
  TakeSelection();
  if (list_.SelectedRow() == id) list_.PressDelete();
}

void ListBinding::TakeDoubleClick(int row) {
  // The rows may be others when the selection has been taken.
  const auto id = list_.RowAt(static_cast<std::size_t>(row));
  TakeSelection();
  list_.DoubleClick(id);
}

void ListBinding::FollowRowsBy(const std::function<void()>& change) {
  {
    const Following guard(following_);
    change();
  }
  FollowEmptiness();
  FollowSorting();
  FollowSelection();
}

void ListBinding::Follow() {
  const std::size_t columns = static_cast<std::size_t>(model_.columnCount());
  {
    const Following guard(following_);
    if (model_.TakeColumns() && columns != list_.Columns().size()) FollowColumnWidths();
  }
  if (shown_images_ != list_.ImageList()) {
    shown_images_ = list_.ImageList();
    view_.doItemsLayout();
  }
  FollowEmptiness();
  FollowSelection();
}

void ListBinding::FollowSelection() {
  const Following guard(following_);
  const auto position = list_.IndexOf(list_.SelectedRow());
  const auto shown = view_.SelectedRow();
  if (!position) {
    if (shown) view_.selectionModel()->clearSelection();
    return;
  }
  const int row = static_cast<int>(*position);
  if (shown == row) return;
  view_.selectionModel()->setCurrentIndex(model_.index(row, 0),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ListBinding::FollowSorting() {
  QHeaderView& header = *view_.header();
  const int column = list_.SortColumn();
  header.setSortIndicatorShown(column >= 0);
  if (column < 0) return;
  header.setSortIndicator(column, list_.GetSortDirection() == controls::SortDirection::kAscending
                                      ? Qt::AscendingOrder
                                      : Qt::DescendingOrder);
}

void ListBinding::FollowEmptiness() {
  hint_.ShowText(list_.Count() == 0 ? ToQt(list_.EmptyText()) : QString());
}

void ListBinding::FollowColumnWidths() {
  int column = 0;
  for (const auto& wanted : list_.Columns()) view_.setColumnWidth(column++, Scale().Scaled(wanted.width));
}

void ListBinding::FollowScale() {
  WidgetBinding::FollowScale();
  FollowColumnWidths();
}

}  // namespace platform::qt
