// Drops arbitrary data on a window: lists of addresses, plain texts, texts in UTF-16 and pages, as other
// programs offer them. The pieces between bytes 0x1E are the data of one format after the other. What must
// hold: what the pointer shows is what a drop does; what is accepted arrives once, from the event loop, and
// is the same offer; it is copied and never moved; its text is bounded; and what the rules make of it is a
// file that the data named or a web address.

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include "fuzz/platform/memory_file.h"
#include "platform/qt/drop_binding.h"
#include "playlist/opening_rules.h"
#include "playlist/web_address.h"

namespace {

using controls::DropOffer;
using fuzz::Require;

constexpr std::array kFormats = {"text/uri-list", "text/plain", "text/plain;charset=utf-16", "text/html",
                                 "text/x-moz-url"};

bool Same(const DropOffer& one, const DropOffer& other) {
  return one.files == other.files && one.addresses == other.addresses && one.text == other.text;
}

void Fill(QMimeData& data, std::string_view input) {
  const auto pieces = fuzz::Pieces(input, '\x1E');
  for (std::size_t at = 0; at < std::min(pieces.size(), kFormats.size()); ++at) {
    if (pieces[at].empty()) continue;
    data.setData(QLatin1String(kFormats[at]),
                 QByteArray(pieces[at].data(), static_cast<qsizetype>(pieces[at].size())));
  }
}

void CheckOffer(const DropOffer& offer) {
  constexpr std::size_t kLongestText = 65'536;
  Require(offer.text.size() <= kLongestText);
  const auto opening = playlist::WhatToOpen(offer);
  if (!opening) return;
  const bool is_link = opening->kind == playlist::Opening::Kind::kLink;
  Require(is_link ? playlist::IsWebAddress(opening->target) : opening->target == offer.files.front());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::NeedWindows();
  QWidget window;
  controls::Form form;
  platform::qt::QtMessageLoop loop;
  fuzz::PlainPaths paths;
  platform::qt::DropBinding drops(form, window, loop, paths);
  DropOffer offered;
  std::vector<DropOffer> dropped;
  form.Accepts = [&](const DropOffer& offer) {
    offered = offer;
    return playlist::WhatToOpen(offer).has_value();
  };
  const auto subscription = form.Dropped.Subscribe([&](const DropOffer& offer) { dropped.push_back(offer); });

  QMimeData mime;
  Fill(mime, fuzz::AsBytes(data, size));
  const Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction;
  QDragEnterEvent enter({5, 5}, possible, &mime, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &enter);
  CheckOffer(offered);
  const DropOffer shown = offered;
  QDropEvent drop({5, 5}, possible, &mime, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &drop);
  Require(drop.isAccepted() == enter.isAccepted() && Same(shown, offered));
  Require(!drop.isAccepted() || drop.dropAction() == Qt::CopyAction);
  Require(dropped.empty());
  QCoreApplication::sendPostedEvents();
  Require(dropped.size() == (drop.isAccepted() ? 1 : 0));
  Require(dropped.empty() || Same(dropped.front(), shown));
  return 0;
}
