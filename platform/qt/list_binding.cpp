#include "platform/qt/list_binding.h"

#include <QApplication>
#include <QHeaderView>
#include <functional>

#include "platform/qt/text.h"

namespace platform::qt {
namespace {

constexpr int kRestMilliseconds = 250;

}  // namespace

ListBinding::ListBinding(controls::ListView& list, ReportView& view, const TwipScale& scale,
                         const QtIcons& icons, QtMessageLoop& loop)
    : InputBinding(list, view, scale, loop),
      list_(list),
      view_(view),
      hint_(*new EmptyHint(view)),
      model_(list, icons),
      columns_(list, view, scale, loop) {
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
  FollowIconSize();
  FollowSorting();
  Follow();
}

ListBinding::~ListBinding() {
  following_ = true;
  view_.setModel(nullptr);
}

void ListBinding::BindUser() {
  QObject::connect(view_.header(), &QHeaderView::sectionClicked, &context_, [this](int column) {
    HandOver([this, column] {
      if (!IsBlocked()) list_.ClickHeader(column);
      FollowSorting();
    });
  });
  QObject::connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, &context_, [this] {
    if (following_) return;
    chosen_ = ShownSelection();
    if (chosen_ == list_.SelectedRow() && !handed_over_) chosen_.reset();
    // A change that no gesture announces comes from a screen reader.
    rest_.start(kRestMilliseconds);
  });
  QObject::connect(&rest_, &QTimer::timeout, &context_, [this] { Rest(); });
  BindKeysAndClicks();
}

void ListBinding::BindKeysAndClicks() {
  subscriptions_ += view_.UserMoved.Subscribe([this](ReportView::Movement how) {
    if (how == ReportView::Movement::kRested) {
      Rest();
    } else {
      rest_.start(kRestMilliseconds);
    }
  });
  subscriptions_ += view_.SelectedRowPressed.Subscribe([this](int row) {
    HandOver(
        [this, id = RowAt(row)] {
          if (!IsBlocked()) list_.ClickRow(id);
        },
        UseOnWait());
  });
  subscriptions_ += view_.RowDoubleClicked.Subscribe([this](int row) { OpenRow(RowAt(row)); });
  subscriptions_ += view_.EnterPressed.Subscribe([this] {
    if (view_.SelectedRow()) OpenRow(ShownSelection());
  });
  subscriptions_ += view_.DeletePressed.Subscribe([this] { DeleteRow(ShownSelection()); });
}

void ListBinding::OpenRow(controls::RowId id) {
  HandOver(
      [this, id] {
        if (!IsBlocked()) TakeDoubleClick(id);
      },
      UseOnWait());
}

void ListBinding::DeleteRow(controls::RowId id) {
  HandOver([this, id] {
    if (!IsBlocked()) TakeDelete(id);
  });
}

void ListBinding::UseOnRow(controls::RowCommand& command, controls::RowId id, bool checked) {
  HandOver([this, &command, id, checked] {
    if (!IsBlocked()) command.Choose(list_, id, checked);
  });
}

void ListBinding::Rest() {
  rest_.stop();
  if (!chosen_ || chosen_ == handed_over_) return;
  // A menu or a dialog must not have to wait for what a selection starts.
  if (QApplication::activePopupWidget() != nullptr || IsBlocked()) {
    rest_.start(kRestMilliseconds);
    return;
  }
  handed_over_ = chosen_;
  const bool selects_a_row = *chosen_ != controls::RowId::kNone;
  HandOver([this, id = *chosen_] { TakeChoice(id); }, selects_a_row ? UseOnWait() : OnWait::kKeepsWaiting);
}

void ListBinding::TakeChoice(controls::RowId id) {
  if (handed_over_ == id) handed_over_.reset();
  if (IsBlocked()) {
    rest_.start(kRestMilliseconds);
    return;
  }
  Select(id);
}

void ListBinding::Select(controls::RowId id) {
  if (chosen_ == id) {
    chosen_.reset();
    rest_.stop();
  }
  if (id != list_.SelectedRow()) list_.Select(id);
  FollowSelection();
}

controls::RowId ListBinding::ShownSelection() const {
  const auto row = view_.SelectedRow();
  return row ? RowAt(*row) : controls::RowId::kNone;
}

controls::RowId ListBinding::RowAt(int row) const { return list_.RowAt(static_cast<std::size_t>(row)); }

void ListBinding::TakeDelete(controls::RowId id) {
  // The list may not know yet which row is shown selected, and selecting it may take so long that the user
  // selects another one meanwhile: only the row that the key was pressed for is deleted.
  Select(id);
  if (list_.SelectedRow() == id) list_.PressDelete();
}

void ListBinding::TakeDoubleClick(controls::RowId id) {
  Select(id);
  // Another row may have been selected meanwhile, and starting would play that one.
  if (list_.SelectedRow() == id) list_.DoubleClick(id);
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
  {
    const Following guard(following_);
    model_.TakeColumns();
  }
  columns_.Fit();
  if (shown_images_ != list_.ImageList()) {
    shown_images_ = list_.ImageList();
    view_.doItemsLayout();
  }
  FollowEmptiness();
  FollowSelection();
}

void ListBinding::FollowSelection() {
  const Following guard(following_);
  const bool chosen_is_gone = chosen_ && *chosen_ != controls::RowId::kNone && !list_.Contains(*chosen_);
  if (chosen_is_gone) chosen_.reset();
  const auto position = list_.IndexOf(chosen_.value_or(list_.SelectedRow()));
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

void ListBinding::FollowIconSize() {
  constexpr int kIconSide = 32;
  const int side = Scale().Scaled(kIconSide);
  model_.SetIconSide(side);
  view_.setIconSize(QSize(side, side));
}

void ListBinding::FollowScale() {
  WidgetBinding::FollowScale();
  FollowIconSize();
  columns_.Fit();
}

}  // namespace platform::qt
