#pragma once
// The system's handle types for headers, declared as the system declares them. Not for using them: source
// files include base/windows_api.h.

using HANDLE = void*;
using HBITMAP = struct HBITMAP__*;
using HBRUSH = struct HBRUSH__*;
using HDC = struct HDC__*;
using HFONT = struct HFONT__*;
using HICON = struct HICON__*;
using HINSTANCE = struct HINSTANCE__*;
using HMENU = struct HMENU__*;
using HWND = struct HWND__*;
