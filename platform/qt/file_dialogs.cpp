#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

#include "platform/qt/dialog_texts.h"
#include "platform/qt/dialogs.h"
#include "platform/qt/text.h"

namespace platform::qt {
namespace {

/// The pairs of description and pattern as Qt's name filters, "description (pattern pattern)".
QStringList NameFilters(const Text& filter) {
  const QStringList parts = ToQt(filter).split(QChar(u'\0'));
  QStringList filters;
  for (qsizetype pair = 0; pair + 1 < parts.size(); pair += 2) {
    QString pattern = parts[pair + 1];
    if (parts[pair].isEmpty() || pattern.isEmpty()) break;
    pattern.replace(QLatin1Char(';'), QLatin1Char(' '));
    const QString in_brackets = QLatin1Char('(') + pattern + QLatin1Char(')');
    const bool names_pattern = parts[pair].endsWith(in_brackets);
    filters << (names_pattern ? parts[pair] : parts[pair] + QLatin1Char(' ') + in_brackets);
  }
  return filters;
}

Text UpToNul(const Text& text) { return text.substr(0, text.find(u'\0')); }

std::string NativeName(const QString& name) { return QFile::encodeName(name).toStdString(); }

}  // namespace

void QtDialogs::NameParts(QFileDialog& dialog, Direction direction) const {
  const bool save = direction == Direction::kSave;
  dialog.setLabelText(QFileDialog::Accept, Translated(save ? dialog_texts::kSave : dialog_texts::kOpen));
  dialog.setLabelText(QFileDialog::Reject, Translated(dialog_texts::kCancel));
  dialog.setLabelText(QFileDialog::LookIn, Translated(dialog_texts::kLookIn));
  dialog.setLabelText(QFileDialog::FileName, Translated(dialog_texts::kFileName));
  dialog.setLabelText(QFileDialog::FileType, Translated(dialog_texts::kFileType));
  if (!dialog.windowTitle().isEmpty()) return;
  dialog.setWindowTitle(Translated(save ? dialog_texts::kSaveTitle : dialog_texts::kOpenTitle));
}

bool QtDialogs::GetOpenFileNameW(OpenFileName& dialog) { return Choose(dialog, Direction::kOpen); }

bool QtDialogs::GetSaveFileNameW(OpenFileName& dialog) { return Choose(dialog, Direction::kSave); }

QString QtDialogs::StartFolder(const OpenFileName& dialog) {
  const auto usable = [](const QString& folder) { return !folder.isEmpty() && QFileInfo(folder).isDir(); };
  const QString wanted =
      QFile::decodeName(QByteArray::fromStdString(paths_.ToNative(UpToNul(dialog.initial_folder))));
  if (usable(wanted)) return wanted;
  if (usable(last_folder_)) return last_folder_;
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return usable(documents) ? documents : QDir::homePath();
}

bool QtDialogs::Choose(OpenFileName& dialog, Direction direction) {
  const bool save = direction == Direction::kSave;
  QFileDialog window(Owner(), ToQt(UpToNul(dialog.title)), StartFolder(dialog));
  window.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  const bool must_exist = !save && (dialog.flags & kOfnFileMustExist) != 0;
  window.setFileMode(must_exist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  window.setOption(QFileDialog::DontConfirmOverwrite, (dialog.flags & kOfnOverwritePrompt) == 0);
  const QStringList filters = NameFilters(dialog.filter);
  if (!filters.isEmpty()) window.setNameFilters(filters);
  const QString extension = ToQt(UpToNul(dialog.default_extension));
  // The dialog has to know the extension before it asks whether to replace an existing file.
  if (save) window.setDefaultSuffix(extension);
  NameParts(window, direction);
  const Text name = UpToNul(dialog.file);
  if (!name.empty()) window.selectFile(QFile::decodeName(QByteArray::fromStdString(paths_.ToNative(name))));
  if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty()) return false;

  QString chosen = window.selectedFiles().first();
  const bool no_extension = !QFileInfo(chosen).fileName().contains(QLatin1Char('.'));
  if (no_extension && !extension.isEmpty() && !QFileInfo::exists(chosen)) {
    chosen += QLatin1Char('.') + extension;
  }
  last_folder_ = QFileInfo(chosen).absolutePath();
  Text path = paths_.FromNative(NativeName(chosen));
  // Shown to the user again, so it keeps the system's look.
  std::replace(path.begin(), path.end(), u'\\', u'/');
  if (path.empty() || path.size() >= dialog.file.size()) return false;
  dialog.file.replace(0, path.size(), path);
  dialog.file[path.size()] = u'\0';
  return true;
}

}  // namespace platform::qt
