#include "tests/support/media_files.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "tests/support/child_process.h"

namespace test_support {

std::string MakeTone(const TempFolder& folder, const std::string& name, const std::string& codec,
                     const Tone& tone, const std::string& more) {
  const std::string path = (folder.Path() / name).string();
  // The sine source has an amplitude of one eighth.
  std::ostringstream wave;
  wave << "sine=frequency=" << tone.hertz << ":sample_rate=" << tone.rate << ":duration=" << tone.seconds
       << ",volume=" << tone.amplitude * 8 << ",pan=" << tone.channels << "c";
  for (int channel = 0; channel < tone.channels; ++channel) wave << "|c" << channel << "=c0";
  ChildProcess::Arguments arguments = {"ffmpeg", "-y", "-loglevel", "error", "-f",
                                       "lavfi",  "-i", wave.str(),  "-c:a",  codec};
  std::istringstream words(more);
  for (std::string word; words >> word;) arguments.push_back(word);
  arguments.push_back(path);
  if (RunProgram(arguments).exit_code != 0) throw std::runtime_error("ffmpeg cannot make " + name);
  return path;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace test_support
