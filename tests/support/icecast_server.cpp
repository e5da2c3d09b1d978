#include "tests/support/icecast_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace test_support {
namespace {

constexpr const char* kPassword = "test";
/// The main thread, statistics, relays and directory listing.
constexpr int kThreads = 4;

std::string Configuration(int port, const std::string& folder) {
  return "<icecast><limits><clients>50</clients><sources>10</sources><burst-size>65535</burst-size></limits>"
         "<authentication><source-password>test</source-password><admin-user>admin</admin-user>"
         "<admin-password>test</admin-password></authentication><hostname>127.0.0.1</hostname>"
         "<listen-socket><port>" +
         std::to_string(port) +
         "</port><bind-address>127.0.0.1</bind-address></listen-socket><paths><basedir>" + folder +
         "</basedir><logdir>" + folder + "</logdir><webroot>" + folder + "</webroot><adminroot>" + folder +
         "</adminroot></paths><logging><accesslog>access.log</accesslog><errorlog>error.log</errorlog>"
         "<loglevel>3</loglevel></logging></icecast>";
}

/// "admin:test"
constexpr const char* kAuthorization = "Authorization: Basic YWRtaW46dGVzdA==\r\n\r\n";

/// The beginning of the answer that a request gets; empty when there is none.
std::string Answer(int port, const std::string& request, std::size_t longest) {
  const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const timeval limit{2, 0};
  setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof(limit));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  std::string answer;
  if (connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0 &&
      send(connection, request.data(), request.size(), MSG_NOSIGNAL) > 0) {
    char bytes[64];
    ssize_t size = 0;
    while (answer.size() < longest && (size = recv(connection, bytes, sizeof(bytes), 0)) > 0) {
      answer.append(bytes, static_cast<std::size_t>(size));
    }
  }
  close(connection);
  return answer;
}

/// The status line that a request gets; empty when there is no answer.
std::string StatusLine(int port, const std::string& request) {
  const std::string answer = Answer(port, request, 1);
  return answer.substr(0, answer.find('\r'));
}

/// True when every thread of a started server waits for something to do.
bool AllThreadsRest(pid_t process) {
  std::error_code gone;
  int resting = 0;
  for (const auto& thread :
       std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task", gone)) {
    std::ifstream status(thread.path() / "stat");
    std::string number;
    std::string name;
    std::string state;
    status >> number >> name >> state;
    if (name != "(icecast2)" || state != "S") return false;
    ++resting;
  }
  return resting >= kThreads;
}

}  // namespace

IcecastServer::IcecastServer() : port_(FreePort()) {
  folder_.Write("icecast.xml", Configuration(port_, folder_.Path().string()));
  chmod(folder_.Path().c_str(), 0755);
  if (geteuid() == 0) {
    const passwd* nobody = getpwnam("nobody");
    if (nobody == nullptr || chown(folder_.Path().c_str(), nobody->pw_uid, nobody->pw_gid) != 0) {
      throw std::runtime_error("the log folder of Icecast cannot be given to the user nobody");
    }
  }
  Start();
}

void IcecastServer::Start() {
  const std::string configuration = (folder_.Path() / "icecast.xml").string();
  ChildProcess::Arguments arguments = {"icecast2", "-c", configuration};
  if (geteuid() == 0) {
    // Icecast refuses to run as root.
    arguments.insert(arguments.begin(), {"setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"});
  }
  server_ = ChildProcess(arguments);
  // A request before all of its threads have started can leave Icecast hanging for good.
  const auto started = [this] { return AllThreadsRest(server_.Pid()); };
  const auto listens = [this] { return !StatusLine(port_, "GET /none HTTP/1.0\r\n\r\n").empty(); };
  if (!WaitUntil(started, std::chrono::seconds(10)) || !WaitUntil(listens, std::chrono::seconds(10))) {
    throw std::runtime_error("Icecast does not listen" + Log());
  }
}

bool IcecastServer::Answers(const std::string& path) const {
  return StatusLine(port_, "GET " + path + " HTTP/1.0\r\n\r\n").find(" 200") != std::string::npos;
}

void IcecastServer::Feed(const std::string& mount, const std::string& file, const std::string& format,
                         const std::string& type) {
  const std::string target =
      std::string("icecast://source:") + kPassword + "@127.0.0.1:" + std::to_string(port_) + mount;
  ChildProcess::Arguments arguments = {"ffmpeg", "-loglevel", "quiet", "-re", "-stream_loop",
                                       "-1",     "-i",        file,    "-c",  "copy"};
  // By itself ffmpeg collects a whole second of sound for each page of Ogg.
  if (format == "ogg") arguments.insert(arguments.end(), {"-page_duration", "100000"});
  arguments.insert(arguments.end(), {"-content_type", type, "-ice_name", kStationName, "-f", format, target});
  ChildProcess process(arguments);
  sources_.insert_or_assign(mount, Source{arguments, std::move(process)});
  const auto heard = [&] { return Answers(mount); };
  if (!WaitUntil(heard, std::chrono::seconds(10))) throw std::runtime_error("nothing feeds " + mount + Log());
}

std::string IcecastServer::Log() const { return "; Icecast says:\n" + folder_.Read("error.log"); }

std::string IcecastServer::Url(const std::string& mount) const {
  return "http://127.0.0.1:" + std::to_string(port_) + mount;
}

bool IcecastServer::IsHeardBy(const std::string& mount, const std::string& user_agent) const {
  constexpr std::size_t kLongest = 65536;
  const std::string request = "GET /admin/listclients?mount=" + mount + " HTTP/1.0\r\n" + kAuthorization;
  return Answer(port_, request, kLongest).find("<UserAgent>" + user_agent + "<") != std::string::npos;
}

void IcecastServer::SetTitle(const std::string& mount, const std::string& title) const {
  const std::string request =
      "GET /admin/metadata?mount=" + mount + "&mode=updinfo&song=" + title + " HTTP/1.0\r\n" + kAuthorization;
  if (StatusLine(port_, request).find(" 200") == std::string::npos) {
    throw std::runtime_error("Icecast does not take the title");
  }
}

void IcecastServer::Kill() {
  server_.Kill();
  for (auto& [mount, source] : sources_) source.process.Kill();
}

void IcecastServer::Restart() {
  Start();
  for (auto& [mount, source] : sources_) source.process = ChildProcess(source.arguments);
  for (auto& [mount, source] : sources_) {
    if (!WaitUntil([this, &name = mount] { return Answers(name); }, std::chrono::seconds(10))) {
      throw std::runtime_error("nothing feeds " + mount + Log());
    }
  }
}

void IcecastServer::Freeze() { server_.Signal(SIGSTOP); }

void IcecastServer::Thaw() { server_.Signal(SIGCONT); }

}  // namespace test_support
