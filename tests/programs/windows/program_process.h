#pragma once
// A program of the player's as a process of its own, looked at from outside, for its tests. Not the program.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "platform/win32/system/environment.h"

namespace program_test {

constexpr auto kProgramLimit = std::chrono::seconds(30);

inline bool ComesTrue(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + kProgramLimit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    ::SleepEx(20, FALSE);
  }
  return true;
}

/// The answer of a window of another process; 0 when there is none in time.
inline DWORD_PTR Ask(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0) {
  constexpr UINT kLongestAnswer = 10'000;
  DWORD_PTR answer = 0;
  ::SendMessageTimeoutW(window, message, w, l, SMTO_NORMAL, kLongestAnswer, &answer);
  return answer;
}

inline std::wstring ShownIn(HWND window) {
  std::wstring text(4096, L'\0');
  text.resize(Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
  return text;
}

inline std::wstring ClassOf(HWND window) {
  std::wstring name(256, L'\0');
  name.resize(static_cast<std::size_t>(::GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
  return name;
}

/// The part of a window for which `fits` holds; null while there is none. The parts of a combo box have
/// numbers of their own.
inline HWND PartOf(HWND window, const std::function<bool(HWND)>& fits) {
  if (ClassOf(window) == WC_COMBOBOXW) return nullptr;
  for (HWND part = ::GetWindow(window, GW_CHILD); part != nullptr; part = ::GetWindow(part, GW_HWNDNEXT)) {
    if (fits(part)) return part;
    if (HWND const inner = PartOf(part, fits); inner != nullptr) return inner;
  }
  return nullptr;
}

/// One start of the program; it is ended with the object.
class ProgramProcess {
 public:
  ProgramProcess(const std::wstring& name, const std::wstring& words,
                 const std::filesystem::path& working_folder) {
    const platform::Text folder = platform::win32::Win32Environment().ProgramFolder();
    std::wstring line = L"\"" + std::wstring(folder.begin(), folder.end()) + L"\\" + name + L"\" " + words;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, working_folder.c_str(),
                         &start, &process_) == 0)
      throw std::runtime_error("the program does not start");
  }
  ~ProgramProcess() {
    ::TerminateProcess(process_.hProcess, 9);
    ::WaitForSingleObject(process_.hProcess, INFINITE);
    ::CloseHandle(process_.hThread);
    ::CloseHandle(process_.hProcess);
  }
  ProgramProcess(const ProgramProcess&) = delete;
  ProgramProcess& operator=(const ProgramProcess&) = delete;

  [[nodiscard]] bool Runs() const { return ::WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT; }
  /// The code with which it ends by itself; nothing when it does not in time.
  [[nodiscard]] std::optional<DWORD> ExitCode() const {
    DWORD code = 0;
    const bool ends = ComesTrue([this] { return !Runs(); });
    return ends && ::GetExitCodeProcess(process_.hProcess, &code) != 0 ? std::optional(code) : std::nullopt;
  }

  /// What it shows, once it does; null when that does not come in time.
  [[nodiscard]] HWND Window() const { return Await(L"FunkhausWindow", false); }
  [[nodiscard]] HWND Dialog() const { return Await(L"FunkhausWindow", true); }
  [[nodiscard]] HWND Box() const { return Await(L"#32770", std::nullopt); }
  /// The text of a box, and its answer OK.
  [[nodiscard]] std::wstring AnswerBox() const {
    HWND const box = Box();
    const auto is_text = [](HWND part) { return ClassOf(part) == L"Static" && !ShownIn(part).empty(); };
    const std::wstring text = ShownIn(PartOf(box, is_text));
    ::PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(ComesTrue([box] { return ::IsWindow(box) == 0; }));
    return text;
  }
  /// Closes the main window; the exit code.
  [[nodiscard]] std::optional<DWORD> Close() const {
    ::PostMessageW(Window(), WM_CLOSE, 0, 0);
    return ExitCode();
  }

 private:
  [[nodiscard]] HWND Await(const wchar_t* window_class, std::optional<bool> is_owned) const {
    HWND found = nullptr;
    ComesTrue([&] { return (found = Shown(window_class, is_owned)) != nullptr || !Runs(); });
    return found;
  }
  [[nodiscard]] HWND Shown(const wchar_t* window_class, std::optional<bool> is_owned) const {
    for (HWND window = ::GetTopWindow(nullptr); window != nullptr;
         window = ::GetWindow(window, GW_HWNDNEXT)) {
      DWORD process = 0;
      ::GetWindowThreadProcessId(window, &process);
      if (process != process_.dwProcessId || !::IsWindowVisible(window)) continue;
      const bool owned = ::GetWindow(window, GW_OWNER) != nullptr;
      if (ClassOf(window) == window_class && is_owned.value_or(owned) == owned) return window;
    }
    return nullptr;
  }

  PROCESS_INFORMATION process_{};
};

}  // namespace program_test
