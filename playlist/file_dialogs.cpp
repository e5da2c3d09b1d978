#include "playlist/file_dialogs.h"

#include <algorithm>
#include <cstddef>

namespace playlist {
namespace {

constexpr std::uint32_t kRecordSize = 76;  // OPENFILENAMEW's first layout
constexpr std::size_t kOpenRoom = 8120;    // units after the default name
constexpr std::size_t kSaveRoom = 512;

Text NulSeparated(Text filter) {
  std::ranges::replace(filter, u'|', u'\0');
  while (!filter.ends_with(TextView(u"\0\0", 2))) filter.push_back(u'\0');
  return filter;
}

platform::OpenFileName Record(const FileDialogParams& params, std::size_t room) {
  platform::OpenFileName record;
  record.struct_size = kRecordSize;
  record.owner = params.owner;
  record.filter = NulSeparated(params.filter);
  record.file = params.default_file_name + Text(room, u'\0');
  record.initial_folder = params.initial_folder;
  record.title = params.title;
  record.default_extension = params.default_extension;
  record.flags = params.flags;
  return record;
}

Text UpToNul(const Text& buffer) { return buffer.substr(0, buffer.find(u'\0')); }

}  // namespace

Text ShowOpenFileDialog(platform::Dialogs& dialogs, const FileDialogParams& params) {
  platform::OpenFileName record = Record(params, kOpenRoom);
  return dialogs.GetOpenFileNameW(record) ? UpToNul(record.file) : Text();
}

Text ShowSaveFileDialog(platform::Dialogs& dialogs, const FileDialogParams& params) {
  platform::OpenFileName record = Record(params, kSaveRoom);
  return dialogs.GetSaveFileNameW(record) ? UpToNul(record.file) : Text();
}

}  // namespace playlist
