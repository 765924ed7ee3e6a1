// The registry of a test's own, as an administrator and as an ordinary user find it.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

/// While it lives, one of the registry's roots is an empty key of this process' own.
class OwnRegistry {
  public:
    explicit OwnRegistry(DWORD options, HKEY newRoot = HKEY_LOCAL_MACHINE)
        : root(newRoot),
          name("Software\\ZandermoliteTests" + std::to_string(GetCurrentProcessId()) +
               (newRoot == HKEY_CURRENT_USER ? "User" : "")) {
        char noClass[] = "";
        EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, name.c_str(), 0, noClass, options,
                                  KEY_ALL_ACCESS, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(root, key), ERROR_SUCCESS);
    }
    OwnRegistry(const OwnRegistry&) = delete;
    OwnRegistry& operator=(const OwnRegistry&) = delete;
    ~OwnRegistry() {
        RegOverridePredefKey(root, nullptr);
        DeleteBelow(key);
        RegCloseKey(key);
        RegDeleteKeyA(HKEY_CURRENT_USER, name.c_str());
    }

    void SetValue(DWORD type, const std::string& bytes) {
        HKEY product = OpenProduct();
        RegSetValueExA(product, valueName, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                       static_cast<DWORD>(bytes.size()));
        RegCloseKey(product);
    }
    /// The value's bytes; the type goes to `type`.
    std::string Value(DWORD& type) {
        HKEY product = OpenProduct();
        char bytes[2048];
        DWORD length = sizeof bytes;
        type = REG_NONE;
        const LSTATUS status = RegQueryValueExA(product, valueName, nullptr, &type,
                                                reinterpret_cast<BYTE*>(bytes), &length);
        RegCloseKey(product);
        return status == ERROR_SUCCESS ? std::string(bytes, length) : "(none)";
    }

    HKEY Key() const { return key; }

    /// For the user's root: the folder of their application data.
    void SetDataFolder(const std::wstring& folder) {
        for (const char* const folders :
             {"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders",
              "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"}) {
            HKEY opened = nullptr;
            EXPECT_EQ(RegCreateKeyA(key, folders, &opened), ERROR_SUCCESS);
            RegSetValueExW(opened, L"AppData", 0, REG_SZ,
                           reinterpret_cast<const BYTE*>(folder.c_str()),
                           static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t)));
            RegCloseKey(opened);
        }
    }

    /// From now on nobody may write the product's key, as ordinary users may not under the
    /// machine's root.
    void DenyWriting() { SetProductAccess(KEY_READ); }
    void AllowWriting() { SetProductAccess(KEY_ALL_ACCESS); }

  private:
    static constexpr char productKey[] = "SOFTWARE\\Norvanta\\Brenvalder 3.0\\Zandermolite";
    static constexpr char valueName[] = "PreferenceFile";

    static void DeleteBelow(HKEY parent) {
        char child[256];
        while (RegEnumKeyA(parent, 0, child, sizeof child) == ERROR_SUCCESS) {
            HKEY opened = nullptr;
            if (RegOpenKeyExA(parent, child, 0, KEY_ALL_ACCESS, &opened) == ERROR_SUCCESS) {
                DeleteBelow(opened);
                RegCloseKey(opened);
            }
            if (RegDeleteKeyA(parent, child) != ERROR_SUCCESS) {
                return;
            }
        }
    }

    void SetProductAccess(DWORD access) {
        HKEY product = nullptr;
        RegCloseKey(OpenProduct());
        ASSERT_EQ(RegOpenKeyExA(key, productKey, 0, READ_CONTROL | WRITE_DAC, &product),
                  ERROR_SUCCESS);
        SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
        PSID everybody = nullptr;
        ASSERT_TRUE(AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0,
                                             &everybody));
        alignas(ACL) BYTE bytes[256];
        auto* const list = reinterpret_cast<ACL*>(bytes);
        InitializeAcl(list, sizeof bytes, ACL_REVISION);
        AddAccessAllowedAce(list, ACL_REVISION, access | READ_CONTROL | WRITE_DAC | DELETE,
                            everybody);
        SECURITY_DESCRIPTOR descriptor;
        InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
        EXPECT_EQ(RegSetKeySecurity(product, DACL_SECURITY_INFORMATION, &descriptor),
                  ERROR_SUCCESS);
        FreeSid(everybody);
        RegCloseKey(product);
    }
    HKEY OpenProduct() const {
        HKEY product = nullptr;
        char noClass[] = "";
        RegCreateKeyExA(key, productKey, 0, noClass, 0, KEY_ALL_ACCESS, nullptr, &product, nullptr);
        return product;
    }

    HKEY root;
    std::string name;
    HKEY key = nullptr;
};
