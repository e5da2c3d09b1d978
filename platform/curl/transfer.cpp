#include "platform/curl/transfer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/curl/library.h"

namespace platform::curl {
namespace {

using Clock = std::chrono::steady_clock;

// These objects exist only where the library does.
struct FreeEasy {
  void operator()(CURL* easy) const { LoadedLibrary()->easy_cleanup(easy); }
};
struct FreeMulti {
  void operator()(CURLM* multi) const { LoadedLibrary()->multi_cleanup(multi); }
};
struct FreeList {
  void operator()(curl_slist* list) const { LoadedLibrary()->slist_free_all(list); }
};
using List = std::unique_ptr<curl_slist, FreeList>;

void Append(List& list, const std::string& line) {
  curl_slist* longer = LoadedLibrary()->slist_append(list.get(), line.c_str());
  if (!longer) return;
  static_cast<void>(list.release());
  list.reset(longer);
}

// libcurl takes "Name:" as a request to leave a line out; "Name;" sends it without a value.
std::string AsListEntry(std::string line) {
  if (line.ends_with(':')) line.back() = ';';
  return line;
}

milliseconds Since(Clock::time_point start) {
  return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

InternetFailure FailureOf(CURLcode result, CURL* easy) {
  switch (result) {
    case CURLE_OK:
      return InternetFailure::kNone;
    case CURLE_OPERATION_TIMEDOUT:
      return InternetFailure::kNoAnswer;
    case CURLE_COULDNT_RESOLVE_HOST:
      return InternetFailure::kUnknownHost;
    case CURLE_COULDNT_CONNECT: {
      long error = 0;
      LoadedLibrary()->easy_getinfo(easy, CURLINFO_OS_ERRNO, &error);
      return error == ECONNREFUSED ? InternetFailure::kRefused : InternetFailure::kNoAnswer;
    }
    default:
      return InternetFailure::kOther;
  }
}

}  // namespace

struct Transfer::State {
  const Library* const library = LoadedLibrary();
  // Both lists have to outlive the handle that was given them.
  List header_lines;
  List status_aliases;
  std::unique_ptr<CURLM, FreeMulti> multi{library == nullptr ? nullptr : library->multi_init()};
  std::unique_ptr<CURL, FreeEasy> easy{library == nullptr ? nullptr : library->easy_init()};
  bool is_added = false;
  bool has_ended = false;
  InternetFailure failure = InternetFailure::kNone;
  bool is_paused = false;
  bool body_has_begun = false;
  http::AnswerHeader header;
  std::optional<Clock::time_point> answer_owed_since;
  Clock::time_point last_arrival = Clock::now();
  std::string buffer;
  std::size_t taken = 0;  // from the start of `buffer`

  ~State() {
    if (is_added) library->multi_remove_handle(multi.get(), easy.get());
  }

  [[nodiscard]] std::size_t Buffered() const { return buffer.size() - taken; }

  // Options are checked by the types of their values only; one that the library does not know is left out.
  template <typename Value>
  void Set(CURLoption option, Value value) const {
    library->easy_setopt(easy.get(), option, value);
  }

  void Describe(const TransferOptions& options);
  void DescribeHeader(const TransferOptions& options);
  void SetCallbacks();
  void End(CURLcode result);
  void Perform();
  void ResumeWhenThereIsRoom();
  bool OnHeaderLine(std::string_view line);
  std::size_t OnBody(std::string_view bytes);
};

void Transfer::State::Describe(const TransferOptions& options) {
  Set(CURLOPT_URL, options.address.c_str());
  Set(CURLOPT_PATH_AS_IS, 1L);
  Set(CURLOPT_PROTOCOLS_STR, "http,https");
  Set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  Set(CURLOPT_FOLLOWLOCATION, 1L);
  Set(CURLOPT_MAXREDIRS, static_cast<long>(http::Exchange::kMostRedirects));
  Set(CURLOPT_PROXY, "");  // not even one that the environment names
  Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connect_limit.count()));
  // Without this, releasing a transfer waits for a name look-up that hangs.
  Set(CURLOPT_QUICK_EXIT, 1L);
  if (options.certificates == Certificates::kIgnored) {
    Set(CURLOPT_SSL_VERIFYPEER, 0L);
    Set(CURLOPT_SSL_VERIFYHOST, 0L);
  }
  if (!options.trusted_certificates.empty()) Set(CURLOPT_CAINFO, options.trusted_certificates.c_str());
}

void Transfer::State::DescribeHeader(const TransferOptions& options) {
  Append(header_lines, "Accept:");  // keeps the library from sending its own
  for (const std::string& line : options.header_lines) Append(header_lines, AsListEntry(line));
  Set(CURLOPT_HTTPHEADER, header_lines.get());
  if (!options.agent.empty()) Set(CURLOPT_USERAGENT, options.agent.c_str());
  Append(status_aliases, "ICY 200");
  Set(CURLOPT_HTTP200ALIASES, status_aliases.get());
}

void Transfer::State::SetCallbacks() {
  using Callback = std::size_t (*)(char*, std::size_t, std::size_t, void*);
  const Callback on_header = [](char* bytes, std::size_t, std::size_t count, void* state) -> std::size_t {
    return static_cast<State*>(state)->OnHeaderLine({bytes, count}) ? count : 0;
  };
  const Callback on_body = [](char* bytes, std::size_t, std::size_t count, void* state) -> std::size_t {
    return static_cast<State*>(state)->OnBody({bytes, count});
  };
  const curl_prereq_callback on_connected = [](void* state, char*, char*, int, int) -> int {
    static_cast<State*>(state)->answer_owed_since = Clock::now();
    return CURL_PREREQFUNC_OK;
  };
  Set(CURLOPT_HEADERFUNCTION, on_header);
  Set(CURLOPT_HEADERDATA, static_cast<void*>(this));
  Set(CURLOPT_WRITEFUNCTION, on_body);
  Set(CURLOPT_WRITEDATA, static_cast<void*>(this));
  Set(CURLOPT_PREREQFUNCTION, on_connected);
  Set(CURLOPT_PREREQDATA, static_cast<void*>(this));
}

bool Transfer::State::OnHeaderLine(std::string_view line) {
  if (body_has_begun) return true;  // a trailer
  if (!header.AddLine(line)) return false;
  if (header.IsFinal()) answer_owed_since.reset();
  return true;
}

std::size_t Transfer::State::OnBody(std::string_view bytes) {
  body_has_begun = true;
  if (Buffered() + bytes.size() > kBufferLimit) {
    is_paused = true;
    return CURL_WRITEFUNC_PAUSE;
  }
  buffer.erase(0, taken);
  taken = 0;
  buffer += bytes;
  last_arrival = Clock::now();
  return bytes.size();
}

void Transfer::State::End(CURLcode result) {
  has_ended = true;
  failure = FailureOf(result, easy.get());
  answer_owed_since.reset();
  if (is_added) library->multi_remove_handle(multi.get(), easy.get());
  is_added = false;
}

void Transfer::State::Perform() {
  if (has_ended) return;
  int running = 0;
  if (library->multi_perform(multi.get(), &running) != CURLM_OK) return End(CURLE_FAILED_INIT);
  int left = 0;
  while (const CURLMsg* message = library->multi_info_read(multi.get(), &left)) {
    if (message->msg == CURLMSG_DONE) return End(message->data.result);
  }
}

void Transfer::State::ResumeWhenThereIsRoom() {
  if (!is_paused || has_ended || Buffered() > kBufferLimit / 2) return;
  is_paused = false;
  library->easy_pause(easy.get(), CURLPAUSE_CONT);
}

Transfer::Transfer(const TransferOptions& options) : state_(std::make_unique<State>()) {
  if (!state_->multi || !state_->easy) {
    state_->End(CURLE_FAILED_INIT);
    return;
  }
  state_->Describe(options);
  state_->DescribeHeader(options);
  state_->SetCallbacks();
  state_->is_added = state_->library->multi_add_handle(state_->multi.get(), state_->easy.get()) == CURLM_OK;
  if (!state_->is_added) state_->End(CURLE_FAILED_INIT);
}

Transfer::~Transfer() = default;

void Transfer::Work(milliseconds slice) {
  const std::size_t buffered = state_->Buffered();
  const bool answered = IsAnswered();
  const bool had_ended = state_->has_ended;
  state_->ResumeWhenThereIsRoom();
  state_->Perform();
  const bool something_happened =
      state_->Buffered() != buffered || IsAnswered() != answered || state_->has_ended != had_ended;
  if (something_happened || !state_->multi) return;
  state_->library->multi_poll(state_->multi.get(), nullptr, 0, static_cast<int>(slice.count()), nullptr);
  state_->Perform();
}

bool Transfer::IsAnswered() const {
  return state_->header.IsFinal() || state_->body_has_begun || (state_->has_ended && !HasFailed());
}

const http::AnswerHeader& Transfer::Header() const { return state_->header; }

std::optional<milliseconds> Transfer::AnswerOwedFor() const {
  if (!state_->answer_owed_since) return std::nullopt;
  return Since(*state_->answer_owed_since);
}

bool Transfer::HasEnded() const { return state_->has_ended; }

InternetFailure Transfer::Failure() const { return state_->failure; }

std::size_t Transfer::Buffered() const { return state_->Buffered(); }

milliseconds Transfer::QuietFor() const { return Since(state_->last_arrival); }

std::size_t Transfer::Take(std::span<std::byte> buffer) {
  const std::size_t count = std::min(buffer.size(), state_->Buffered());
  if (count > 0) std::memcpy(buffer.data(), state_->buffer.data() + state_->taken, count);
  state_->taken += count;
  return count;
}

}  // namespace platform::curl
