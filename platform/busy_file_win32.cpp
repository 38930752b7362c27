// Renames through a handle.
#include "platform/busy_file_win32.h"

#include <algorithm>
#include <vector>

namespace platform {

bool renameOpenFile(HANDLE file, const std::string& path) {
    wchar_t name[MAX_PATH + 1];
    const int length = MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, name, MAX_PATH + 1);
    if (length == 0) return false;
    std::vector<unsigned char> buffer(sizeof(FILE_RENAME_INFO) + sizeof name);
    auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    info->ReplaceIfExists = TRUE;
    info->FileNameLength = static_cast<DWORD>((length - 1) * sizeof(wchar_t));
    std::copy_n(name, length, info->FileName);
    return SetFileInformationByHandle(file, FileRenameInfo, info,
                                      static_cast<DWORD>(buffer.size())) != 0;
}

}  // namespace platform
