#pragma once
// What either program settles with the system before anything else. Not what the program does.

/// One per process, on its user-interface thread, for as long as the program runs. While it lives, OLE is
/// initialised and the system's controls can be used. For good: a drive without a disk is an error and no
/// question to the user, and libraries named without a folder come from the program's folder or the system's,
/// never from the working folder, which is where a list that was opened lies, nor from PATH.
class SystemSetup {
 public:
  SystemSetup();
  ~SystemSetup();
  SystemSetup(const SystemSetup&) = delete;
  SystemSetup& operator=(const SystemSetup&) = delete;
};
