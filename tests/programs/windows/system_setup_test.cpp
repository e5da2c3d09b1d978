#include "programs/windows/system_setup.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>
#include <objbase.h>

#include <array>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

using test_support::TempFolder;

/// A library of the system's under a name of its own.
std::wstring PutLibrary(const TempFolder& folder, const std::wstring& name) {
  std::array<wchar_t, MAX_PATH> system{};
  ::GetSystemDirectoryW(system.data(), MAX_PATH);
  std::wstring path = (folder.Path() / name).wstring();
  EXPECT_NE(::CopyFileW((std::wstring(system.data()) + L"\\version.dll").c_str(), path.c_str(), TRUE), 0);
  return path;
}

bool Loads(const std::wstring& name) {
  HMODULE const library = ::LoadLibraryW(name.c_str());
  if (library != nullptr) ::FreeLibrary(library);
  return library != nullptr;
}

TEST(SystemSetup, NoLibraryComesFromTheWorkingFolderOrFromPath) {
  const SystemSetup setup;
  const TempFolder folder;
  const std::wstring path = PutLibrary(folder, L"funkhaus_planted.dll");
  std::wstring before(MAX_PATH, L'\0');
  before.resize(::GetCurrentDirectoryW(MAX_PATH, before.data()));
  std::wstring search(32767, L'\0');
  search.resize(::GetEnvironmentVariableW(L"PATH", search.data(), 32767));
  ::SetCurrentDirectoryW(folder.Path().c_str());
  EXPECT_FALSE(Loads(L"funkhaus_planted.dll"));
  ::SetCurrentDirectoryW(before.c_str());
  ::SetEnvironmentVariableW(L"PATH", (folder.Path().wstring() + L";" + search).c_str());
  EXPECT_FALSE(Loads(L"funkhaus_planted.dll"));
  ::SetEnvironmentVariableW(L"PATH", search.c_str());
  EXPECT_TRUE(Loads(path));
  EXPECT_TRUE(Loads(L"winmm.dll"));
}

TEST(SystemSetup, NoFolderIsAddedInTheWorkingFoldersPlace) {
  ::SetDllDirectoryW(L"C:\\");
  const SystemSetup setup;
  std::array<wchar_t, MAX_PATH> added{};
  EXPECT_EQ(::GetDllDirectoryW(MAX_PATH, added.data()), 0U);
}

TEST(SystemSetup, DriveWithoutADiskIsNoQuestionToTheUser) {
  const UINT before = ::SetErrorMode(SEM_NOOPENFILEERRORBOX);
  {
    const SystemSetup setup;
    EXPECT_EQ(::GetErrorMode(), UINT{SEM_NOOPENFILEERRORBOX | SEM_FAILCRITICALERRORS});
  }
  ::SetErrorMode(before);
}

TEST(SystemSetup, OleIsInitialisedWhileItLives) {
  APTTYPE type{};
  APTTYPEQUALIFIER qualifier{};
  {
    const SystemSetup setup;
    EXPECT_EQ(::CoGetApartmentType(&type, &qualifier), S_OK);
    EXPECT_TRUE(type == APTTYPE_STA || type == APTTYPE_MAINSTA);
  }
  EXPECT_EQ(::CoGetApartmentType(&type, &qualifier), CO_E_NOTINITIALIZED);
}

}  // namespace
