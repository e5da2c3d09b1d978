// What the programs' file says about itself and shows of itself (programs/windows/program.rc).

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace platform::win32 {
namespace {

/// The bytes of a resource of this program, which has the same as the others; empty for none.
std::vector<std::byte> Resource(int number, const wchar_t* kind) {
  HRSRC const found = ::FindResourceW(nullptr, MAKEINTRESOURCEW(number), kind);
  if (found == nullptr) return {};
  const auto* const bytes = static_cast<const std::byte*>(::LockResource(::LoadResource(nullptr, found)));
  return {bytes, bytes + ::SizeofResource(nullptr, found)};
}

TEST(ProgramResourcesTest, IconHasTheSizesOfTheUsualResolutions) {
  constexpr std::size_t kHeader = 6;
  constexpr std::size_t kEntry = 14;
  const std::vector<std::byte> icon = Resource(1, RT_GROUP_ICON);
  std::vector<int> widths;
  // The width is an entry's first byte, with 0 for 256.
  for (std::size_t at = kHeader; at + kEntry <= icon.size(); at += kEntry)
    widths.push_back(std::to_integer<int>(icon[at]));
  EXPECT_EQ(widths, (std::vector{16, 20, 24, 32, 40, 48, 64, 0}));
  for (const int side : {16, 20, 24, 32, 40, 48, 64, 256}) {
    HANDLE const loaded =
        ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON, side, side, 0);
    EXPECT_NE(loaded, nullptr) << side;
    ::DestroyIcon(static_cast<HICON>(loaded));
  }
}

TEST(ProgramResourcesTest, DescriptionNamesTheHolderOfTheLicence) {
  std::vector<std::byte> description = Resource(VS_VERSION_INFO, RT_VERSION);
  const auto value = [&description](const std::wstring& name) {
    void* text = nullptr;
    UINT length = 0;
    const std::wstring place = L"\\StringFileInfo\\040704b0\\" + name;
    const BOOL known = ::VerQueryValueW(description.data(), place.c_str(), &text, &length);
    return known == FALSE ? std::wstring() : std::wstring(static_cast<const wchar_t*>(text));
  };
  EXPECT_EQ(value(L"CompanyName"), L"The Funkhausplayer developers");
  EXPECT_EQ(value(L"LegalCopyright"), L"Copyright (c) 2026 The Funkhausplayer developers");
}

}  // namespace
}  // namespace platform::win32
