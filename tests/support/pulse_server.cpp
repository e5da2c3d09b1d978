#include "tests/support/pulse_server.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tests/support/local_socket.h"

namespace test_support {
namespace {

/// The text between `before` and the end of its line; empty when `before` does not occur.
std::string After(const std::string& text, const std::string& before) {
  const auto at = text.find(before);
  if (at == std::string::npos) return {};
  const auto start = at + before.size();
  return text.substr(start, text.find('\n', start) - start);
}

/// The entry of `application` in the list of streams; empty when there is none.
std::string Entry(const std::string& list, const std::string& application) {
  const std::string head = "Sink Input #";
  for (auto at = list.find(head); at != std::string::npos;) {
    const auto next = list.find(head, at + 1);
    std::string entry = list.substr(at, next == std::string::npos ? next : next - at);
    if (entry.find("application.name = \"" + application + "\"") != std::string::npos) return entry;
    at = next;
  }
  return {};
}

}  // namespace

PulseServer::PulseServer() : address_("unix:" + (folder_.Path() / "native").string()) {
  chmod(folder_.Path().c_str(), 0700);
  Start();
}

ChildProcess::Environment PulseServer::Variables() const {
  const std::string folder = folder_.Path().string();
  return {{"XDG_RUNTIME_DIR", folder},
          {"HOME", folder},
          {"PULSE_SERVER", address_},
          {"LC_ALL", "C"},
          {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + folder + "/no-bus"}};
}

void PulseServer::UseInThisProcess() const { setenv("PULSE_SERVER", address_.c_str(), 1); }

void PulseServer::Start() {
  auto variables = Variables();
  variables.erase("PULSE_SERVER");
  // Without "norewinds" playback stalls at its start on a null sink.
  ChildProcess::Arguments arguments = {"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                                       "--use-pid-file=no"};
  if (remembers_volumes_) arguments.push_back("--load=module-stream-restore restore_device=false");
  arguments.insert(arguments.end(), {"--load=module-null-sink sink_name=ci rate=48000 norewinds=1",
                                     "--load=module-native-protocol-unix auth-anonymous=1 socket=" +
                                         (folder_.Path() / "native").string()});
  server_ = ChildProcess(arguments, variables);
  const auto answers = [this] { return RunProgram({"pactl", "info"}, Variables()).exit_code == 0; };
  if (!WaitUntil(answers, std::chrono::seconds(15))) {
    throw std::runtime_error("the private PulseAudio server does not answer");
  }
}

std::string PulseServer::ListStreams() const {
  return RunProgram({"pactl", "list", "sink-inputs"}, Variables()).output;
}

std::optional<PulseServer::Stream> PulseServer::FindStream(const std::string& application) const {
  const std::string entry = Entry(ListStreams(), application);
  if (entry.empty()) return std::nullopt;
  Stream stream;
  const std::string volume = After(entry, "Volume:");
  stream.volume_percent = std::atoi(After(volume, "/").c_str());
  stream.decibels = std::strtod(After(volume.substr(volume.find('%')), "/").c_str(), nullptr);
  stream.mute = After(entry, "Mute: ") == "yes";
  stream.corked = After(entry, "Corked: ") == "yes";
  std::istringstream specification(After(entry, "Sample Specification: "));
  std::string format;
  specification >> format >> stream.channels;
  return stream;
}

std::string PulseServer::NumberOf(const std::string& application) const {
  return After(Entry(ListStreams(), application), "Sink Input #");
}

std::string PulseServer::Control(ChildProcess::Arguments arguments) const {
  arguments.insert(arguments.begin(), "pactl");
  const RunResult result = RunProgram(arguments, Variables());
  if (result.exit_code != 0) throw std::runtime_error("pactl " + arguments[1] + " failed");
  return result.output;
}

void PulseServer::MoveSlider(const std::string& application, int percent) const {
  Control({"set-sink-input-volume", NumberOf(application), std::to_string(percent) + "%"});
}

void PulseServer::Mute(const std::string& application, bool mute) const {
  Control({"set-sink-input-mute", NumberOf(application), mute ? "1" : "0"});
}

void PulseServer::PlugIn() {
  plugged_in_ = Control({"load-module", "module-null-sink", "sink_name=second", "rate=48000", "norewinds=1"});
  plugged_in_.erase(plugged_in_.find_last_not_of('\n') + 1);
  // Recorders would move to the new card's monitor too.
  Control({"set-default-source", "ci.monitor"});
  Control({"set-default-sink", "second"});
}

void PulseServer::TakeCardAway() const { Control({"unload-module", "module-null-sink"}); }

void PulseServer::GiveCardBack() const {
  Control({"load-module", "module-null-sink", "sink_name=ci", "rate=48000", "norewinds=1"});
}

void PulseServer::Suspend(bool suspend) const { Control({"suspend-sink", "ci", suspend ? "1" : "0"}); }

void PulseServer::KillStream(const std::string& application) const {
  // pactl cannot do it; the server's own command line can.
  const std::string path = (folder_.Path() / "commands").string();
  const std::string number = NumberOf(application);
  const std::string command = "kill-sink-input " + number + "\n";
  Control({"load-module", "module-cli-protocol-unix", "socket=" + path});
  const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof(address.sun_path) - 1);
  if (connect(socket.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
      send(socket.Get(), command.data(), command.size(), MSG_NOSIGNAL) < 0) {
    throw std::runtime_error("the sound server takes no commands");
  }
  const auto ended = [&] { return NumberOf(application) != number; };
  if (!WaitUntil(ended, std::chrono::seconds(5))) throw std::runtime_error("the stream does not end");
}

void PulseServer::MakeDefault(const std::string& card) const { Control({"set-default-sink", card}); }

void PulseServer::Unplug() { Control({"unload-module", plugged_in_}); }

void PulseServer::RescueStreams() const { Control({"load-module", "module-rescue-streams"}); }

}  // namespace test_support
