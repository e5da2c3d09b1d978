#pragma once
// A window with a list of made-up stations, and the user's gestures in it. Not a list of the program's.

#include "platform/win32/base/windows_api.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32/ui/list_binding.h"
#include "tests/platform/win32/ui/rig.h"

namespace platform::win32 {

class Win32ListTest : public Win32WindowTest {
 protected:
  void Fill(int count) {
    list.AddColumn({u"Station", 200});
    list.AddColumn({u"Genre", 100});
    std::vector<controls::ListRow> rows;
    for (int row = 0; row < count; ++row) {
      const std::string digits = std::to_string(row);
      rows.push_back({controls::RowId::kNone,
                      -1,
                      controls::RowMark::kNone,
                      {u"Sender " + Text(digits.begin(), digits.end()), u"Köln\nBonn"}});
    }
    list.AddRows(std::move(rows));
    list.Move({0, 0, 8000, 5000});
    inventory.insert(inventory.begin(), {"list", &list});
    Open();
  }
  LRESULT Ask(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return ::SendMessageW(Of(list), message, w, l);
  }
  Text Cell(int row, int column) const {
    std::array<wchar_t, 64> buffer{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = buffer.data();
    item.cchTextMax = static_cast<int>(buffer.size());
    Ask(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    const std::wstring text = buffer.data();
    return {text.begin(), text.end()};
  }
  int Shown() const { return static_cast<int>(Ask(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)); }
  void SelectAsUser(int row) const {
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    Ask(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&state));
  }
  /// The rectangle of a part of a row, as LVIR_... names it.
  RECT Part(int row, LONG part) const {
    RECT place{};
    place.left = part;
    Ask(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    return place;
  }
  LPARAM PointIn(int row) const {
    const RECT place = Part(row, LVIR_BOUNDS);
    return MAKELPARAM(place.left + 60, place.top + 5);
  }
  void Click(int row) const {
    Ask(WM_LBUTTONDOWN, MK_LBUTTON, PointIn(row));
    Ask(WM_LBUTTONUP, 0, PointIn(row));
  }
  /// The system's message about a row, as after a click.
  void Report(UINT code, int row) const {
    NMITEMACTIVATE notice{};
    notice.hdr.hwndFrom = Of(list);
    notice.hdr.code = code;
    notice.iItem = row;
    ::SendMessageW(window->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
  }
  /// What has to be painted anew since all was painted.
  RECT Dirty() const {
    RECT dirty{};
    ::GetUpdateRect(Of(list), &dirty, FALSE);
    return dirty;
  }
  RECT Inside() const {
    RECT all{};
    ::GetClientRect(Of(list), &all);
    return all;
  }
  ListBinding& Binding() const { return *window->Controls().Lists().front(); }

  controls::ListView list;
  controls::CommandButton button;
};

}  // namespace platform::win32
