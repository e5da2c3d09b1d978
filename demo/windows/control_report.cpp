// Starts a program and reports to the demonstration's driver where on the screen its controls are and what
// they show:
//
//   control_report REPORT PROGRAM
//
// The report has the form that
// demo/control_report.h describes; it is made from outside, so the program is the one that users get. Ends
// with the program, with its code.

#include "platform/win32/base/windows_api.h"

#include <commctrl.h>
#include <dlgs.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/forms/form1.h"
#include "app/forms/form2.h"
#include "platform/win32/ui/control_set.h"

namespace {

constexpr UINT kLongestAnswer = 2000;  // milliseconds
constexpr std::size_t kLongestText = 4096;

std::string Utf8(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

/// Whether a window was too busy to answer; until that is cleared, none is asked any more.
bool is_busy = false;

DWORD_PTR Ask(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0) {
  DWORD_PTR answer = 0;
  if (is_busy) return answer;
  const LRESULT answered =
      ::SendMessageTimeoutW(window, message, w, l, SMTO_ABORTIFHUNG, kLongestAnswer, &answer);
  if (answered != 0) return answer;
  is_busy = ::IsWindow(window) != 0;
  return 0;
}

/// The text of another process's control, which GetWindowTextW does not ask for.
std::wstring TextOf(HWND window) {
  std::wstring text(kLongestText, L'\0');
  text.resize(Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
  return text;
}

std::wstring ClassOf(HWND window) {
  std::wstring name(256, L'\0');
  name.resize(static_cast<std::size_t>(::GetClassNameW(window, name.data(), static_cast<int>(name.size()))));
  return name;
}

std::string Line(const std::string& name, const RECT& place, const std::wstring& text) {
  std::string shown;
  for (const char unit : Utf8(text)) {
    if (unit == '\\') shown += "\\\\";
    if (unit == '\n') shown += "\\n";
    if (unit != '\\' && unit != '\n' && unit != '\r') shown += unit;
  }
  char numbers[64];
  std::snprintf(numbers, sizeof numbers, " %ld %ld %ld %ld ", place.left, place.top, place.right - place.left,
                place.bottom - place.top);
  return name + numbers + shown + '\n';
}

std::string Line(const std::string& name, HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  return Line(name, place, TextOf(window));
}

/// Memory in the reported process: a list writes its answers there.
class RemoteMemory {
 public:
  explicit RemoteMemory(HANDLE process)
      : process_(process),
        address_(::VirtualAllocEx(process, nullptr, kSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {}
  ~RemoteMemory() { ::VirtualFreeEx(process_, address_, 0, MEM_RELEASE); }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;

  RECT PlaceOf(HWND list, WPARAM row) {
    RECT place{LVIR_BOUNDS, 0, 0, 0};
    ::WriteProcessMemory(process_, address_, &place, sizeof place, nullptr);
    Ask(list, LVM_GETITEMRECT, row, reinterpret_cast<LPARAM>(address_));
    ::ReadProcessMemory(process_, address_, &place, sizeof place, nullptr);
    return place;
  }
  std::wstring TextOf(HWND list, WPARAM row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = reinterpret_cast<wchar_t*>(static_cast<char*>(address_) + sizeof item);
    item.cchTextMax = static_cast<int>(kLongestText);
    ::WriteProcessMemory(process_, address_, &item, sizeof item, nullptr);
    std::wstring text(Ask(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(address_)), L'\0');
    ::ReadProcessMemory(process_, address_, &item, sizeof item, nullptr);
    ::ReadProcessMemory(process_, item.pszText, text.data(), text.size() * sizeof(wchar_t), nullptr);
    return text;
  }

 private:
  static constexpr std::size_t kSize = sizeof(LVITEMW) + (kLongestText + 1) * sizeof(wchar_t);
  HANDLE process_;
  void* address_;
};

/// In one step, so that the driver never reads half a report.
bool Write(const std::wstring& path, const std::string& lines) {
  const std::wstring next = path + L".next";
  FILE* const file = ::_wfopen(next.c_str(), L"wb");
  if (file == nullptr) return false;
  const bool written = std::fwrite(lines.data(), 1, lines.size(), file) == lines.size();
  return std::fclose(file) == 0 && written &&
         ::MoveFileExW(next.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

class Reporter {
 public:
  Reporter(const PROCESS_INFORMATION& program, const std::wstring& path)
      : program_(program), path_(path), memory_(program.hProcess) {
    for (const app::FormControl& entry : form_.inventory) player_.push_back(entry.name);
    for (const app::FormControl& entry : app::Form2().inventory) dialog_.push_back(entry.name);
  }

  /// A round in which a window was too busy is none: what it showed stays in the report until it answers.
  void Report() {
    is_busy = false;
    std::vector<Part> parts;
    for (HWND window = ::GetTopWindow(nullptr); window != nullptr;
         window = ::GetWindow(window, GW_HWNDNEXT)) {
      DWORD process = 0;
      ::GetWindowThreadProcessId(window, &process);
      if (process == program_.dwProcessId && ::IsWindowVisible(window) != 0)
        parts.push_back({window, Window(window)});
    }
    if (!is_busy) parts_ = std::move(parts);
    WriteWhatIsLeft();
  }

 private:
  struct Part {
    HWND window;
    std::string lines;
  };

  /// Without the windows that have gone. A round takes seconds on a loaded machine, and the driver waits for
  /// boxes to close.
  void WriteWhatIsLeft() {
    std::erase_if(parts_, [](const Part& part) { return ::IsWindowVisible(part.window) == 0; });
    std::string lines;
    for (const Part& part : parts_) lines += part.lines;
    if (lines != written_ && Write(path_, lines)) written_ = lines;
  }

  std::string Window(HWND window) {
    const bool owned = ::GetWindow(window, GW_OWNER) != nullptr;
    if (ClassOf(window) == L"FunkhausWindow") {
      return owned ? Line("dialog", window) + Controls(window, dialog_, "dialog.")
                   : Line("window", window) + Controls(window, player_, "");
    }
    if (ClassOf(window) != L"#32770") return {};
    HWND name = ::GetDlgItem(window, cmb13);
    if (name == nullptr) name = ::GetDlgItem(window, edt1);
    return name == nullptr ? Box(window) : Line("dialog", window) + Line("dialog.fileNameEdit", name);
  }

  static std::string Box(HWND box) {
    std::string buttons;
    int number = 0;
    std::wstring text;
    for (HWND part = ::GetWindow(box, GW_CHILD); part != nullptr; part = ::GetWindow(part, GW_HWNDNEXT)) {
      if (ClassOf(part) == L"Button") buttons += Line("box[" + std::to_string(number++) + "]", part);
      if (ClassOf(part) == L"Static" && text.empty()) text = TextOf(part);
    }
    RECT place{};
    ::GetWindowRect(box, &place);
    return Line("box", place, text) + buttons;
  }

  std::string Controls(HWND parent, const std::vector<std::string>& names, const std::string& owner) {
    std::string lines;
    for (HWND part = ::GetWindow(parent, GW_CHILD); part != nullptr; part = ::GetWindow(part, GW_HWNDNEXT)) {
      WriteWhatIsLeft();
      if (::IsWindowVisible(part) == 0) continue;
      const auto number = static_cast<std::size_t>(::GetDlgCtrlID(part) - platform::win32::kFirstControlId);
      if (number < names.size()) lines += Line(owner + names[number], part);
      if (number < names.size() && ClassOf(part) == WC_LISTVIEWW) lines += Rows(part, owner + names[number]);
      // The parts of a combo box have numbers of their own.
      if (ClassOf(part) != WC_COMBOBOXW) lines += Controls(part, names, owner);
    }
    return lines;
  }

  /// As it is painted: the list's own text says the row's mark, too, for screen readers.
  std::wstring NameOf(HWND list, WPARAM row) {
    std::wstring name = memory_.TextOf(list, row, 0);
    for (const controls::RowMark mark : {controls::RowMark::kPlaying, controls::RowMark::kWaiting}) {
      const auto& spoken = form_.SymbolListview.MarkText(mark);
      const std::wstring end = L", " + std::wstring(spoken.begin(), spoken.end());
      if (name.ends_with(end)) name.resize(name.size() - end.size());
    }
    return name;
  }

  std::string Rows(HWND list, const std::string& name) {
    std::string lines;
    auto* const header = reinterpret_cast<HWND>(Ask(list, LVM_GETHEADER));
    const int columns = static_cast<int>(Ask(header, HDM_GETITEMCOUNT));
    const DWORD_PTR first = Ask(list, LVM_GETTOPINDEX);
    const DWORD_PTR end = std::min(first + Ask(list, LVM_GETCOUNTPERPAGE), Ask(list, LVM_GETITEMCOUNT));
    for (DWORD_PTR row = first; row < end; ++row) {
      std::wstring texts;
      for (int column = 0; column < columns; ++column) {
        texts += column == 0 ? NameOf(list, row) : L" | " + memory_.TextOf(list, row, column);
      }
      RECT place = memory_.PlaceOf(list, row);
      ::MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&place), 2);
      lines += Line(name + "[" + std::to_string(row) + "]", place, texts);
    }
    return lines;
  }

  const PROCESS_INFORMATION& program_;
  const std::wstring path_;
  RemoteMemory memory_;
  std::vector<Part> parts_;
  std::string written_;
  app::Form1 form_;
  std::vector<std::string> player_;
  std::vector<std::string> dialog_;
};

int ReportUntilEnd(const PROCESS_INFORMATION& program, const std::wstring& path) {
  constexpr DWORD kPause = 100;
  Reporter reporter(program, path);
  while (::WaitForSingleObject(program.hProcess, kPause) == WAIT_TIMEOUT) reporter.Report();
  Write(path, "");
  DWORD code = 0;
  ::GetExitCodeProcess(program.hProcess, &code);
  return static_cast<int>(code);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  constexpr int kWrongUse = 2;
  if (argc != 3) return kWrongUse;
  std::wstring command = L"\"" + std::wstring(argv[2]) + L"\"";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION program{};
  if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                       &program) == 0) {
    std::fprintf(stderr, "the program does not start: error %lu\n", ::GetLastError());
    return kWrongUse;
  }
  return ReportUntilEnd(program, argv[1]);
}
