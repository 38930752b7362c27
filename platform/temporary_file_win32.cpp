// Locks tell leftovers from files in use.
#include "platform/temporary_file.h"

#include <system_error>

#include "platform/busy_file_win32.h"

namespace platform {
namespace {

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The texts of other systems, where there is one.
std::string reasonFor(DWORD error) {
    const std::error_code code(static_cast<int>(error), std::system_category());
    return code.default_error_condition().message();
}

// Whether the lock was free and nobody is removing the file. The locked byte is beyond every end.
bool isOurs(HANDLE file) {
    OVERLAPPED place = {};
    place.OffsetHigh = 0x7fffffff;
    constexpr DWORD kAtOnce = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    FILE_STANDARD_INFO info = {};
    return LockFileEx(file, kAtOnce, 0, 1, 0, &place) &&
           GetFileInformationByHandleEx(file, FileStandardInfo, &info, sizeof info) &&
           !info.DeletePending;
}

HANDLE openToMove(const std::string& path, DWORD alsoTo = 0) {
    return CreateFileA(path.c_str(), DELETE | alsoTo, kShared, nullptr, OPEN_EXISTING,
                       FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

void removeOnClosing(HANDLE file) {
    FILE_DISPOSITION_INFO removal = {TRUE};
    SetFileInformationByHandle(file, FileDispositionInfo, &removal, sizeof removal);
}

void removeLeftover(const std::string& path) {
    const HANDLE file = openToMove(path, GENERIC_READ);
    if (file == INVALID_HANDLE_VALUE) return;
    if (isOurs(file)) removeOnClosing(file);
    CloseHandle(file);
}

// Returns INVALID_HANDLE_VALUE if the name is taken.
HANDLE createAlone(const std::string& path) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, kShared, nullptr,
                                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE || isOurs(file)) return file;
    CloseHandle(file);
    SetLastError(ERROR_FILE_EXISTS);
    return INVALID_HANDLE_VALUE;
}

bool isWriteProtected(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& path) : path_(path) {
    for (int number = 1; handle_ == -1; ++number) {
        temporaryPath_ = temporaryPath(path_, number);
        removeLeftover(temporaryPath_);
        handle_ = reinterpret_cast<std::intptr_t>(createAlone(temporaryPath_));
        const DWORD error = GetLastError();
        if (handle_ == -1 && error != ERROR_FILE_EXISTS) failToWrite(path_, reasonFor(error));
    }
}

TemporaryFile::~TemporaryFile() {
    const HANDLE file = openToMove(temporaryPath_);
    if (file != INVALID_HANDLE_VALUE) {
        removeOnClosing(file);
        CloseHandle(file);
    }
    CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

void TemporaryFile::commit() {
    char target[MAX_PATH];
    const DWORD length = GetFullPathNameA(path_.c_str(), MAX_PATH, target, nullptr);
    if (length == 0 || length >= MAX_PATH) failToWrite(path_, "the path is too long");
    if (isWriteProtected(target)) failToWrite(path_, "it is write-protected");

    FlushFileBuffers(reinterpret_cast<HANDLE>(handle_));
    const HANDLE file = openToMove(temporaryPath_);
    const bool isMoved =
        file != INVALID_HANDLE_VALUE &&
        tryPatiently([&] { return renameOpenFile(file, target); }, ERROR_ACCESS_DENIED);
    const DWORD error = GetLastError();
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
    if (isMoved) {
        temporaryPath_.clear();
    } else if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION) {
        failToWrite(path_, "another program has it open");
    } else {
        failToWrite(path_, reasonFor(error));
    }
}

}  // namespace platform
