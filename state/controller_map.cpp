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

constexpr std::size_t kLargestFile = 64 << 20;

std::int32_t wordAt(const std::string& bytes, int index) {
    std::uint32_t word = 0;
    for (std::size_t b = 0; b < kEntrySize; ++b) {
        const auto byte = static_cast<unsigned char>(bytes[index * kEntrySize + b]);
        word |= static_cast<std::uint32_t>(byte) << 8 * b;
    }
    return static_cast<std::int32_t>(word);
}

// Without a data folder the map is in the current folder, where anybody may have planted a link.
// Links are refused there.
struct Place {
    std::string path;
    platform::Links links;
};

Place ownPlace() {
    const auto folder = findDataFolder(platform::kProductName);
    return {folder.value_or("") + kControllerMapFile,
            folder ? platform::Links::kFollow : platform::Links::kRefuse};
}

}  // namespace

void ControllerMap::clear() {
    for (int i = 0; i < kNumParams; ++i) bind(i, kUnbound);
}

void ControllerMap::load() {
    const Lock lock(fileLock_);
    Place place = ownPlace();
    if (!platform::fileExists(place.path)) {
        const auto beside = platform::resourceFolder();
        if (beside) place = {*beside + kControllerMapFile, platform::Links::kFollow};
    }
    auto file = platform::readFileStart(place.path, kFileSize, place.links);
    unsaved_.store(0, std::memory_order_relaxed);
    due_.store(false, std::memory_order_relaxed);
    if (file) file->resize(kFileSize, '\0');
    for (int i = 0; i < kNumParams; ++i) store(i, file ? wordAt(*file, i) : kUnbound);
}

std::string ControllerMap::savedOnto(const std::optional<std::string>& file,
                                     std::uint64_t changed) const {
    std::string bytes = file.value_or("");
    bytes.resize(kFileSize, '\0');
    for (int i = 0; i < kNumParams; ++i) {
        if (file && !(changed >> i & 1)) continue;
        const auto word = static_cast<std::uint32_t>(controller(i));
        for (std::size_t b = 0; b < kEntrySize; ++b) {
            bytes[i * kEntrySize + b] = static_cast<char>(word >> 8 * b);
        }
    }
    return bytes;
}

void ControllerMap::save() {
    const Lock lock(fileLock_);
    due_.store(false, std::memory_order_relaxed);
    const std::uint64_t changed = unsaved_.exchange(0, std::memory_order_acquire);
    const Place place = ownPlace();
    const auto present = platform::readFileStart(place.path, kFileSize + 1, place.links);
    if (present && savedOnto(present, changed) == *present) return;
    const auto edit = [&](const auto& file) { return savedOnto(file, changed); };
    if (!platform::updateFile(place.path, kLargestFile, edit, place.links)) {
        unsaved_.fetch_or(changed, std::memory_order_relaxed);
    }
}

void ControllerMap::saveIfChanged() {
    if (due_.load(std::memory_order_acquire)) save();
}

ControllerMap& controllerMap() {
    static ControllerMap map;
    return map;
}

}  // namespace state
