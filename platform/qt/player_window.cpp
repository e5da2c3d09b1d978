#include "platform/qt/player_window.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QShortcut>
#include <algorithm>
#include <utility>

#include "platform/qt/application_icon.h"
#include "platform/qt/list_menu.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

// Inner size in twips below which the bottom panel and the list have no room any more.
constexpr int kSmallestWidth = 9900;
// Here the information panel, which lies over the list then, still stands inside the window.
constexpr int kSmallestHeight = 7410;

QString InBrackets(const QKeySequence& keys) {
  return QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText));
}

}  // namespace

PlayerWindow::PlayerWindow(app::Form1& form, const QtIcons& icons, QtMessageLoop& loop, Language language)
    : form_(form),
      loop_(loop),
      language_(language),
      scale_(QApplication::font()),
      widgets_(scale_, icons, loop),
      form_binding_(form.form, *this, scale_, loop, &form.StatusLine) {
  setWindowIcon(ApplicationIcon());
  // Those that come later lie above: the panels lie over the main panel that fills the window.
  QGroupBox& lists = widgets_.Add(form_.Frame2, *this, "Frame2", FrameLook::kTitled);
  full_list_ = &widgets_.Add(form_.SymbolListview, lists, "SymbolListview");
  filtered_list_ = &widgets_.Add(form_.ExplorerListFilter, lists, "ExplorerListFilter");
  lists.setToolTip(InLanguage(language_, u"Zur Liste", u"To the list") + InBrackets(QKeySequence::Find));
  QGroupBox& panel = widgets_.Add(form_.Frame1, *this, "Frame1", FrameLook::kPlain);
  BuildPlaying(panel);
  BuildEditor(panel);
  BuildViews(panel);
  BuildInformation();
  widgets_.AddStrip(form_.StatusLine, *this, "StatusLine");
  for (controls::Timer* timer : {&form_.tmPlay, &form_.Timer1, &form_.Timer2, &form_.tmUnsaved})
    widgets_.Add(*timer);
  SetTabOrder();
  BindKeys();
  subscriptions_ += form_.Frame2.Changed.Subscribe([this] { NameLists(); });
  NameLists();
  setMinimumSize(SmallestSize());
  subscriptions_ += form_.form.Closed.Subscribe([] { QCoreApplication::exit(); });
}

PlayerWindow::~PlayerWindow() = default;

void PlayerWindow::BuildPlaying(QWidget& panel) {
  auto& start = widgets_.Add(form_.Command1, panel, "Command1");
  auto& stop = widgets_.Add(form_.Command6, panel, "Command6");
  auto& titles = widgets_.Add(form_.Command3, panel, "Command3");
  if (form_.Command3.ToolTip().empty()) {
    titles.setToolTip(InLanguage(language_, u"Rechtsklick oder Menütaste: laufende Titelanzeige ein oder aus",
                                 u"Right click or menu key: running title display on or off"));
  }
  auto& directory = widgets_.Add(form_.Command2, panel, "Command2");
  widgets_.Add(form_.Label1, panel, "Label1");
  QGroupBox& volume = widgets_.Add(form_.frSav, panel, "frSav", FrameLook::kPlain);
  auto& slider = widgets_.Add(form_.hscSavVolume, volume, "hscSavVolume");
  widgets_.Add(form_.lblSav, volume, "lblSav", &slider);
  auto& mute = widgets_.Add(form_.ckSavMute, volume, "ckSavMute");
  auto& mixer = widgets_.Add(form_.Command7, volume, "Command7");
  tab_order_ = {full_list_, filtered_list_, &start, &stop, &titles, &directory, &slider, &mute, &mixer};
}

void PlayerWindow::BuildEditor(QWidget& panel) {
  auto& name = widgets_.Add(form_.TextBox1[0], panel, "TextBox1_0");
  auto& link = widgets_.Add(form_.TextBox1[1], panel, "TextBox1_1");
  auto& genre = widgets_.Add(form_.Combo1, panel, "Combo1");
  auto& number = widgets_.Add(form_.UpDownTextBox1, panel, "UpDownTextBox1");
  widgets_.Add(form_.Label5, panel, "Label5", &name);
  widgets_.Add(form_.Label6, panel, "Label6", &link);
  widgets_.Add(form_.Label7, panel, "Label7", &genre);
  widgets_.Add(form_.Label2, panel, "Label2", &number).setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto& favourite = widgets_.Add(form_.Check2, panel, "Check2");
  static constexpr std::array kNames = {"Command8_0", "Command8_1", "Command8_2",
                                        "Command8_3", "Command8_4", "Command8_5"};
  std::array<QWidget*, kNames.size()> buttons{};
  for (std::size_t index = 0; index < kNames.size(); ++index) {
    buttons[index] = &widgets_.Add(form_.Command8[index], panel, kNames[index]);
  }
  // Its tooltip names the genre as that of another button does; whoever hears the names needs both apart.
  buttons[0]->setAccessibleName(InLanguage(language_, u"M3U-Nummer übernehmen", u"Take over M3U number"));
  for (QWidget* next :
       std::initializer_list<QWidget*>{&name, buttons[1], &link, buttons[2], &genre, buttons[4], &favourite,
                                       &number, buttons[0], buttons[3], buttons[5]}) {
    tab_order_.push_back(next);
  }
}

void PlayerWindow::BuildViews(QWidget& panel) {
  tab_order_.push_back(&widgets_.Add(form_.Check1, panel, "Check1"));
  tab_order_.push_back(&widgets_.Add(form_.Check3, panel, "Check3"));
  auto& save = widgets_.Add(form_.CommandButton1, panel, "CommandButton1");
  if (form_.CommandButton1.ToolTip().empty()) {
    save.setToolTip(PlainToolTip(ToQt(form_.CommandButton1.Caption()) + InBrackets(QKeySequence::Save)));
  }
  tab_order_.push_back(&save);
  tab_order_.push_back(&widgets_.Add(form_.CommandButton2, panel, "CommandButton2"));
  tab_order_.push_back(&widgets_.Add(form_.Command4, panel, "Command4"));
  tab_order_.push_back(&widgets_.Add(form_.Command5, panel, "Command5"));
}

void PlayerWindow::BuildInformation() {
  auto& left = widgets_.Add(form_.ProgressBar1[0], *this, "ProgressBar1_0");
  auto& right = widgets_.Add(form_.ProgressBar1[1], *this, "ProgressBar1_1");
  left.setAccessibleName(InLanguage(language_, u"Pegel links", u"Level, left"));
  right.setAccessibleName(InLanguage(language_, u"Pegel rechts", u"Level, right"));
  QGroupBox& panel = widgets_.Add(form_.Frame3, *this, "Frame3", FrameLook::kPanel);
  panel.setAccessibleName(InLanguage(language_, u"Informationen zum Sender", u"Station information"));
  auto& picture = widgets_.Add(form_.Image1, panel, "Image1");
  picture.setAccessibleName(InLanguage(language_, u"Senderbild", u"Station picture"));
  title_ = &widgets_.AddFitted(form_.Label4, panel, "Label4");
  QFont bold = title_->font();
  bold.setBold(true);
  title_->setFont(bold);
  information_ = &widgets_.AddFitted(form_.Label3, panel, "Label3");
  auto& close = widgets_.Add(form_.CmdInfoClose, panel, "CmdInfoClose");
  close.setFlat(true);
  close.setAccessibleName(InLanguage(language_, u"Informationen schließen", u"Close information"));
  tab_order_.push_back(&close);
  for (controls::Control* control :
       std::initializer_list<controls::Control*>{&form_.Image1, &form_.Label3, &form_.Label4}) {
    subscriptions_ += control->Changed.Subscribe([this] { KeepTextsOffPicture(); });
  }
  KeepTextsOffPicture();
}

void PlayerWindow::KeepTextsOffPicture() {
  const bool shown = form_.Image1.Visible() && form_.Image1.Picture() != 0;
  const QRect picture = shown ? scale_.Pixels(form_.Image1.GetPlace()) : QRect();
  for (FittedLabel* label : {title_, information_}) {
    const QRect covered = picture & label->geometry();
    label->SetObstacle(covered.isEmpty() ? QRect() : covered.translated(-label->pos()));
  }
}

void PlayerWindow::SetTabOrder() {
  for (std::size_t next = 1; next < tab_order_.size(); ++next) {
    QWidget::setTabOrder(tab_order_[next - 1], tab_order_[next]);
  }
}

void PlayerWindow::BindShortcut(const QKeySequence& keys, std::function<void()> action) {
  auto* shortcut = new QShortcut(keys, this);
  shortcut->setAutoRepeat(false);
  connect(shortcut, &QShortcut::activated, this, std::move(action));
}

void PlayerWindow::BindCommand(const QKeySequence& keys, const std::function<void()>& command) {
  BindShortcut(keys, [this, command] {
    loop_.HandOver(*this, [this, command] {
      if (!IsBlockedByDialog(*this)) command();
    });
  });
}

void PlayerWindow::BindKeys() {
  BindCommand(QKeySequence::Save, [this] { form_.CommandButton1.Click(); });
  BindCommand(QKeySequence::New, [this] {
    // While a filter hides the button, a new station could not be saved.
    if (form_.CommandButton2.Visible()) form_.CommandButton2.Click();
  });
  // A text field that has the focus takes these keys for what was typed in it.
  BindCommand(QKeySequence::Undo, [this] { form_.UndoDelete.Click(); });
  BindShortcut(QKeySequence::Find, [this] {
    ReportView* list = form_.ExplorerListFilter.Visible() ? filtered_list_ : full_list_;
    list->setFocus(Qt::ShortcutFocusReason);
  });
  for (controls::ListView* list : {&form_.SymbolListview, &form_.ExplorerListFilter}) {
    subscriptions_ += list->DeletePressed.Subscribe([this] { form_.Command8[3].Click(); });
  }
  for (ReportView* list : {full_list_, filtered_list_}) {
    subscriptions_ += list->MenuWanted.Subscribe(
        [this, list](const QPoint& place) { ShowListMenu(form_, *list, loop_, place); });
  }
}

void PlayerWindow::NameLists() {
  const QString name = ToQt(form_.Frame2.Caption());
  for (ReportView* list : {full_list_, filtered_list_}) {
    if (list->accessibleName() != name) list->setAccessibleName(name);
  }
}

QSize PlayerWindow::SmallestSize() const {
  return form_binding_.WindowSize(kSmallestWidth, kSmallestHeight).boundedTo(screen()->availableSize());
}

void PlayerWindow::Open() {
  // Room for the title bar and the borders that the window manager adds.
  constexpr QSize kBorders(20, 60);
  const QSize room = screen()->availableSize() - kBorders;
  const controls::Place& place = form_.form.GetPlace();
  const QSize wanted = form_binding_.WindowSize(place.width, place.height);
  resize(wanted.boundedTo(room).expandedTo(minimumSize()));
  (form_.ExplorerListFilter.Visible() ? filtered_list_ : full_list_)->setFocus();
  show();
}

int PlayerWindow::Run() {
  if (form_.form.IsClosed()) return 0;
  Open();
  return QApplication::exec();
}

void PlayerWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  // Not every system tells a minimised window that nobody sees it.
  if (event->type() == QEvent::WindowStateChange) setUpdatesEnabled(!isMinimized());
  const bool other_font =
      event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange;
  if (!other_font || !scale_.SetFont(font())) return;
  setMinimumSize(SmallestSize());
  widgets_.FollowScale();
  KeepTextsOffPicture();
  form_binding_.FollowScale();
}

}  // namespace platform::qt
