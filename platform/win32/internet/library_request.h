#pragma once
// One GET to one server, as WinINet carries it: asynchronously. Not for redirects and for what an answer
// means (internet/request_thread.h).

#include <cstdint>
#include <memory>
#include <string>

#include "platform/http/address.h"
#include "platform/http/exchange.h"
#include "platform/win32/internet/body_piece.h"
#include "platform/win32/internet/reading.h"

namespace platform::win32 {

/// Every member is for the thread that made the object. That thread alone knows the library's handles, calls
/// the library with them and closes them, so none is ever used after it was closed, when its value may
/// already stand for another request. This is possible because no call waits inside the library: what cannot
/// be done at once is reported to a callback, and the thread waits here, where Reading::Cancel ends its wait.
/// The library may keep a closed request for longer (Wine does, as long as the server is silent); what it
/// writes to lives until it reports the end of the request's handle, after which it reports nothing more
/// about it. Public reference: the system's documentation of WinINet, "Asynchronous Operation".
class LibraryRequest {
 public:
  /// `place` is kept until the library has released the request.
  LibraryRequest(const std::shared_ptr<Reading>& reading, const http::ExchangeOptions& options,
                 const http::AddressParts& parts, std::shared_ptr<void> place);
  ~LibraryRequest();
  LibraryRequest(const LibraryRequest&) = delete;
  LibraryRequest& operator=(const LibraryRequest&) = delete;

  /// Sends the request and waits for the answer's header; the library's number for what went wrong, 0 for
  /// nothing. After Reading::Cancel it is ERROR_INTERNET_OPERATION_CANCELLED.
  std::uint32_t Send(std::string lines);
  /// The header block as the library has it, in place of what `header` was; false when there is none or it is
  /// too long.
  bool ReadHeader(http::AnswerHeader& header);
  /// The next bytes of the body, as soon as there are some; empty at its end. The result is that of Send.
  std::uint32_t Read(std::string& piece);
  /// No connection of an earlier request was used, as far as it came to one.
  [[nodiscard]] bool HasConnectedAnew() const;

 private:
  struct State;
  struct Callback;
  void Open(const http::ExchangeOptions& options, const http::AddressParts& parts);
  void SetLimits(const http::ExchangeOptions& options);
  std::uint32_t Await(Operation operation, int done);
  Completion CountBytes();
  Completion ReadBytes(std::size_t wanted, std::string& piece);

  void* session_ = nullptr;
  void* connection_ = nullptr;
  void* request_ = nullptr;
  std::shared_ptr<State> state_;
};

}  // namespace platform::win32
