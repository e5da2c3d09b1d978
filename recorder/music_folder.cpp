#include "recorder/music_folder.h"

#include "app/text/text_utilities.h"

namespace recorder {

using platform::Text;

Text RecordingFolder(platform::Environment& environment) {
  return app::AddBackslash(environment.MusicFolder()) + u"Funkhausplayer";
}

bool MakeFolder(platform::Files& files, const Text& folder) {
  if (files.PathFileExistsW(folder)) return true;
  // A level that already exists cannot be created, which is fine; the final check decides.
  for (std::size_t end = folder.find(u'\\', 1); end != Text::npos; end = folder.find(u'\\', end + 1)) {
    files.CreateDirectoryW(folder.substr(0, end));
  }
  files.CreateDirectoryW(folder);
  return files.PathFileExistsW(folder);
}

}  // namespace recorder
