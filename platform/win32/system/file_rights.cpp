#include "platform/win32/system/file_rights.h"

#include "platform/win32/base/windows_api.h"

#include <aclapi.h>

#include <utility>

namespace platform::win32 {
namespace {

struct RightsFound {
  bool has_list = false;
  bool is_protected = false;
  PACL list = nullptr;  ///< may be null although there is one: then everything is granted to all
};

RightsFound FindRights(std::vector<std::byte>& descriptor) {
  if (descriptor.empty()) return {};
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  BOOL present = FALSE;
  BOOL by_default = FALSE;
  PACL list = nullptr;
  if (::GetSecurityDescriptorControl(descriptor.data(), &control, &revision) == 0 ||
      ::GetSecurityDescriptorDacl(descriptor.data(), &present, &list, &by_default) == 0) {
    return {};
  }
  return {present != FALSE, (control & SE_DACL_PROTECTED) != 0, list};
}

/// The entries that do not come from a folder, in a list of the same form; nothing when there are none.
std::vector<std::byte> OwnEntriesOf(PACL list) {
  std::vector<std::byte> own(list->AclSize);
  auto* const own_list = reinterpret_cast<PACL>(own.data());
  ::InitializeAcl(own_list, list->AclSize, list->AclRevision);
  for (DWORD index = 0; index < list->AceCount; ++index) {
    void* entry = nullptr;
    if (::GetAce(list, index, &entry) == 0) break;
    const auto& header = *static_cast<const ACE_HEADER*>(entry);
    if ((header.AceFlags & INHERITED_ACE) != 0) continue;
    ::AddAce(own_list, list->AclRevision, MAXDWORD, entry, header.AceSize);
  }
  return own_list->AceCount > 0 ? own : std::vector<std::byte>();
}

}  // namespace

bool SetRights(HANDLE file, FoldersRights folders, void* list) {
  const SECURITY_INFORMATION inherited = folders == FoldersRights::kCount
                                             ? UNPROTECTED_DACL_SECURITY_INFORMATION
                                             : PROTECTED_DACL_SECURITY_INFORMATION;
  return ::SetSecurityInfo(file, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inherited, nullptr, nullptr,
                           static_cast<PACL>(list), nullptr) == ERROR_SUCCESS;
}

FileRights FileRights::Of(const std::wstring& path) {
  DWORD size = 0;
  ::GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> descriptor(size);
  if (size == 0 ||
      ::GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size) == 0) {
    descriptor.clear();
  }
  return FileRights(std::move(descriptor));
}

FileRights::FileRights(std::vector<std::byte> descriptor) {
  const RightsFound found = FindRights(descriptor);
  if (!found.has_list) return;
  if (found.list != nullptr && found.is_protected) {
    const auto* const bytes = reinterpret_cast<const std::byte*>(found.list);
    own_list_.assign(bytes, bytes + found.list->AclSize);
  } else if (found.list != nullptr) {
    own_list_ = OwnEntriesOf(found.list);
    if (own_list_.empty()) return;
  }
  source_ = found.is_protected ? Source::kFile : Source::kFolderAndFile;
}

bool FileRights::GiveTo(HANDLE file, const RightsSetting& set) const {
  if (!AreItsOwn()) return true;
  std::vector<std::byte> list = own_list_;
  return set(file, source_ == Source::kFile ? FoldersRights::kDoNotCount : FoldersRights::kCount,
             list.empty() ? nullptr : list.data());
}

}  // namespace platform::win32
