#pragma once
// The program on Windows: creates the platform's adapters and the main window over them, and runs it.
// Not for the program's behaviour; that is the main window's.

#include <memory>

#include "ports/text.h"

namespace platform {
class StartRequests;
}

/// One per process. Order: construct, Run. OLE is initialised by whoever creates it.
class Program {
 public:
  Program();
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Shows the window and returns when it has been closed. `argument` is opened as if it had been dropped on
  /// the window.
  void Run(const platform::Text& argument);

  /// Answers later starts; to be called whenever one has arrived while Run runs.
  void Serve(platform::StartRequests& requests);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};
