// A registry key of the current user, made when it is missing, that gives no more than some access while the object lives:
// reading, if not said otherwise.
#pragma once

#include <string>

#include "platform/handles.h"
#include "platform/win32.h"

using namespace platform;

class LockedKey {
 public:
  explicit LockedKey(const std::string& path, DWORD access = KEY_READ) {
    HKEY key = nullptr;
    ::RegCreateKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, WRITE_DAC, nullptr, &key, nullptr);
    key_.reset(key);
    Allow(access);
  }
  LockedKey(const LockedKey&) = delete;
  LockedKey& operator=(const LockedKey&) = delete;
  ~LockedKey() { Allow(KEY_ALL_ACCESS); }

 private:
  void Allow(DWORD access) const {
    SID everyone = {SID_REVISION, 1, SECURITY_WORLD_SID_AUTHORITY, {SECURITY_WORLD_RID}};
    alignas(ACL) char buffer[128];
    ACL* const list = reinterpret_cast<ACL*>(buffer);
    ::InitializeAcl(list, sizeof buffer, ACL_REVISION);
    ::AddAccessAllowedAce(list, ACL_REVISION, access, &everyone);
    SECURITY_DESCRIPTOR descriptor;
    ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    ::SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
    ::RegSetKeySecurity(key_.get(), DACL_SECURITY_INFORMATION, &descriptor);
  }

  UniqueKey key_;
};
