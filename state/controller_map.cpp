// The controller map and its file.
#include "state/controller_map.h"

#include <algorithm>
#include <string>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/product.h"
#include "state/data_folder.h"

namespace state {

namespace {

constexpr std::size_t kEntrySize = 4;  // bytes, little-endian
constexpr std::size_t kFileSize = kNumParams * kEntrySize;

using Lock = std::lock_guard<std::mutex>;

std::string dataFolderPath() {
    return findDataFolder(platform::kProductName).value_or("") + kControllerMapFile;
}

}  // namespace

void ControllerMap::clear() {
    for (int i = 0; i < kNumParams; ++i) bind(i, kUnbound);
}

void ControllerMap::load() {
    const Lock lock(fileLock_);
    std::string path = dataFolderPath();
    if (!platform::fileExists(path)) path = platform::moduleFolder() + kControllerMapFile;
    const auto contents = platform::readFileStart(path, kFileSize);
    if (contents) {
        take(*contents);
    } else {
        clear();
    }
    changed_.store(false, std::memory_order_relaxed);
    source_ = contents ? path : "";
}

void ControllerMap::take(std::string bytes) {
    bytes.resize(kFileSize, '\0');
    for (int i = 0; i < kNumParams; ++i) {
        std::uint32_t word = 0;
        for (std::size_t b = 0; b < kEntrySize; ++b) {
            word |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i * 4 + b]))
                    << 8 * b;
        }
        bind(i, static_cast<std::int32_t>(word));
    }
}

void ControllerMap::save() {
    const Lock lock(fileLock_);
    const bool changed = changed_.exchange(false, std::memory_order_acquire);
    const std::string path = dataFolderPath();
    if (!changed && path != source_ && platform::fileExists(path)) return;
    std::string bytes;
    for (int i = 0; i < kNumParams; ++i) {
        const auto word = static_cast<std::uint32_t>(controller(i));
        for (std::size_t b = 0; b < kEntrySize; ++b) bytes += static_cast<char>(word >> 8 * b);
    }
    platform::writeFile(path, bytes);
}

void ControllerMap::saveIfChanged() {
    if (changed_.load(std::memory_order_relaxed)) save();
}

ControllerMap& controllerMap() {
    static ControllerMap map;
    return map;
}

}  // namespace state
