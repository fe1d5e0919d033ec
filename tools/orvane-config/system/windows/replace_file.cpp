// A file that gets another content in one step, on Windows.
#include "system/replace_file.hpp"

#include "system/windows/handle.hpp"

#include "qel/util/native_path.hpp"

#include <stdexcept>

namespace orvane {
namespace {

constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void fail_at(const std::string& name) {
    fail(std::string("cannot replace ").append(name), GetLastError());
}

/// Where a link leads.
std::wstring target_of(const std::wstring& file, const std::string& name) {
    const Handle handle(CreateFileW(file.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION entry{};
    if (handle.get() == INVALID_HANDLE_VALUE || !GetFileInformationByHandle(handle.get(), &entry))
        fail_at(name);
    if (entry.nNumberOfLinks > 1)
        throw std::runtime_error(std::string("cannot replace ")
                                     .append(name)
                                     .append(": it has ")
                                     .append(std::to_string(entry.nNumberOfLinks))
                                     .append(" hard links, and the others would keep the old content"));
    std::wstring target(1 << 15, L'\0');
    const DWORD size =
        GetFinalPathNameByHandleW(handle.get(), target.data(), static_cast<DWORD>(target.size()), 0);
    if (size == 0 || size > target.size()) fail_at(name);
    target.resize(size);
    return target;
}

void write_new(const std::wstring& file, const std::string& content, const std::string& name) {
    const Handle handle(
        CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD size = 0;
    const bool is_written =
        handle.get() != INVALID_HANDLE_VALUE &&
        WriteFile(handle.get(), content.data(), static_cast<DWORD>(content.size()), &size, nullptr) &&
        size == content.size() && FlushFileBuffers(handle.get());
    if (!is_written) fail_at(name);
}

} // namespace

void replace_file(const qel::util::filesystem::Path& file, const std::string& content) {
    const auto given = qel::util::filesystem::native(file);
    const std::string name = given.string();
    const std::wstring target = target_of(given.wstring(), name);
    const std::size_t last = target.rfind(L'\\') + 1;
    // Who reads all files of a directory skips those that begin with a dot.
    const std::wstring next = std::wstring(target, 0, last)
                                  .append(L".")
                                  .append(target, last)
                                  .append(L".")
                                  .append(std::to_wstring(GetCurrentProcessId()));
    try {
        write_new(next, content, name);
        if (!ReplaceFileW(target.c_str(), next.c_str(), nullptr, 0, nullptr, nullptr)) fail_at(name);
    } catch (...) {
        // Were the old one gone, this would be the only one.
        if (GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES) DeleteFileW(next.c_str());
        throw;
    }
}

} // namespace orvane
