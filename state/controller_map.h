// Maps MIDI controllers to parameters. All instances in the process share the map; it is saved to a
// file.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "state/parameters.h"

namespace state {

// Holds a controller number (0..127) or kUnbound for each parameter. Several parameters may follow
// one controller. Any thread may read and bind; audio threads must not load or save.
class ControllerMap {
  public:
    static constexpr std::int32_t kUnbound = -1;

    ControllerMap() { clear(); }

    std::int32_t controller(int parameter) const {
        return controllers_[parameter].load(std::memory_order_relaxed);
    }
    void bind(int parameter, std::int32_t controller) {
        store(parameter, controller);
        unsaved_.fetch_or(std::uint64_t{1} << parameter, std::memory_order_release);
        due_.store(true, std::memory_order_release);
    }
    void clear();
    // Moves on after every change. Nothing has changed since the last look if it stands.
    std::uint32_t changes() const { return changes_.load(std::memory_order_acquire); }

    // Reads the map from the data folder, else from the library's folder. Without a file nothing is
    // bound. intentional: a short file binds the remaining parameters to controller 0.
    void load();
    // Merges the bindings made since the last load into the file, or writes the whole map if there
    // is no file. The file is in the data folder, or in the current folder if there is no data
    // folder. Failures are not reported; the next save tries again.
    void save();
    // Saves if anything was bound since the last load or save.
    void saveIfChanged();

  private:
    void store(int parameter, std::int32_t controller) {
        controllers_[parameter].store(controller, std::memory_order_relaxed);
        changes_.fetch_add(1, std::memory_order_release);
    }
    // The new content of the file, given its current content and the changed parameters.
    std::string savedOnto(const std::optional<std::string>& file, std::uint64_t changed) const;

    std::array<std::atomic<std::int32_t>, kNumParams> controllers_;
    std::atomic<std::uint32_t> changes_{0};
    std::atomic<std::uint64_t> unsaved_{0};  // one bit per parameter
    std::atomic<bool> due_{false};
    std::mutex fileLock_;  // load and save
};

// The map of the process.
ControllerMap& controllerMap();

// The parameter that the next controller will be bound to; one slot per instance. The editor arms
// it, and the first thread to receive a controller takes it.
class LearnSlot {
  public:
    static constexpr int kNone = -1;

    void arm(int parameter) { parameter_.store(parameter, std::memory_order_relaxed); }
    void disarm() { arm(kNone); }
    int armed() const { return parameter_.load(std::memory_order_relaxed); }
    // Disarms and returns the armed parameter, or kNone.
    int take() { return parameter_.exchange(kNone, std::memory_order_relaxed); }

  private:
    std::atomic<int> parameter_{kNone};
};

}  // namespace state
