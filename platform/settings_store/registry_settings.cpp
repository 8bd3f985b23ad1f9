// Registry calls with their handles and texts wrapped.
#include "settings_store/registry_settings.h"

#include <windows.h>

#include <memory>
#include <type_traits>

#include "base/failure.h"

namespace brenvik {
namespace {

struct KeyCloser {
    void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

HKEY RootKey(SettingsRoot root) {
    switch (root) {
        case SettingsRoot::LocalMachine:
            return HKEY_LOCAL_MACHINE;
    }
    return HKEY_LOCAL_MACHINE;
}

std::wstring Wide(std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string Narrow(std::wstring_view wide) {
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
    return text;
}

// A key that is opened, or none where it does not exist or may not be opened that way.
Key OpenKey(SettingsRoot root, std::string_view path, REGSAM access) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(RootKey(root), Wide(path).c_str(), 0, access, &key) != ERROR_SUCCESS) return nullptr;
    return Key(key);
}

Failure CannotWrite(LSTATUS status, std::string_view path) {
    return status == ERROR_ACCESS_DENIED ? PermissionDenied(std::string(path))
                                         : PathAccess(std::string(path));
}

// The data of a value, without the zeros that end it.
std::string DataText(const std::wstring& data, DWORD bytes) {
    std::wstring_view text(data.data(), bytes / sizeof(wchar_t));
    while (!text.empty() && text.back() == L'\0') text.remove_suffix(1);
    return Narrow(text);
}

}  // namespace

std::string RegistrySettings::GetSetting(SettingsRoot root, std::string_view path, std::string_view name) {
    const std::wstring widePath = Wide(path);
    const std::wstring wideName = Wide(name);
    DWORD bytes = 0;
    if (RegGetValueW(RootKey(root), widePath.c_str(), wideName.c_str(), RRF_RT_REG_SZ, nullptr, nullptr,
                     &bytes) != ERROR_SUCCESS)
        return {};
    std::wstring data(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(data.size() * sizeof(wchar_t));
    if (RegGetValueW(RootKey(root), widePath.c_str(), wideName.c_str(), RRF_RT_REG_SZ, nullptr, data.data(),
                     &bytes) != ERROR_SUCCESS)
        return {};
    return DataText(data, bytes);
}

void RegistrySettings::SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                                   std::string_view text) {
    HKEY created = nullptr;
    LSTATUS status = RegCreateKeyExW(RootKey(root), Wide(path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                     KEY_SET_VALUE, nullptr, &created, nullptr);
    if (status != ERROR_SUCCESS) throw CannotWrite(status, path);
    const Key key(created);
    const std::wstring data = Wide(text);
    const DWORD bytes = static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t));
    status = RegSetValueExW(key.get(), Wide(name).c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(data.c_str()), bytes);
    if (status != ERROR_SUCCESS) throw CannotWrite(status, path);
}

void RegistrySettings::DeleteSetting(SettingsRoot root, std::string_view path, std::string_view name) {
    const LSTATUS status = RegDeleteKeyValueW(RootKey(root), Wide(path).c_str(), Wide(name).c_str());
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) throw CannotWrite(status, path);
}

std::vector<std::pair<std::string, std::string>> RegistrySettings::EnumerateSettings(SettingsRoot root,
                                                                                     std::string_view path) {
    std::vector<std::pair<std::string, std::string>> values;
    const Key key = OpenKey(root, path, KEY_QUERY_VALUE);
    if (!key) return values;
    // The longest name of a value that the registry allows, with its zero.
    constexpr DWORD longestName = 16384;
    std::wstring name(longestName, L'\0');
    for (DWORD index = 0;; ++index) {
        DWORD length = longestName;
        const LSTATUS status =
            RegEnumValueW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status != ERROR_SUCCESS) return values;
        const std::string valueName = Narrow(std::wstring_view(name.data(), length));
        values.emplace_back(valueName, GetSetting(root, path, valueName));
    }
}

}  // namespace brenvik
