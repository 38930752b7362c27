// Which MIDI controller drives which parameter, shared by all instances of the process and kept in
// a file.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "state/parameters.h"

namespace state {

// One word a parameter: a controller number 0..127, or kUnbound. Several parameters may follow one
// controller. Any thread reads and binds; any but an audio thread loads and saves.
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

    // Reads the map from the data folder, or from beside the library when it is not there. A short
    // file leaves the rest bound to controller 0: kept. Without a file nothing is bound.
    void load();
    // Puts what was bound here since the last load into the file as it is by now, in the data
    // folder or in the current folder when there is none; without a file the whole map. Failures
    // are not reported: the next save tries again.
    void save();
    // Does that if anything was bound since the last load, save or saveIfChanged.
    void saveIfChanged();

  private:
    void store(int parameter, std::int32_t controller) {
        controllers_[parameter].store(controller, std::memory_order_relaxed);
    }
    // The bytes that belong into the file.
    std::string savedOnto(const std::optional<std::string>& file, std::uint64_t changed) const;

    std::array<std::atomic<std::int32_t>, kNumParams> controllers_;
    std::atomic<std::uint64_t> unsaved_{0};  // one bit a parameter
    std::atomic<bool> due_{false};
    std::mutex fileLock_;  // load and save
};

// The map of the process.
ControllerMap& controllerMap();

// The parameter that waits for the next controller to be bound to it, at most one an instance.
// Armed by the editor, taken by whichever thread meets a controller first.
class LearnSlot {
  public:
    static constexpr int kNone = -1;

    void arm(int parameter) { parameter_.store(parameter, std::memory_order_relaxed); }
    void disarm() { arm(kNone); }
    int armed() const { return parameter_.load(std::memory_order_relaxed); }
    // The armed parameter, disarmed by this call, or kNone.
    int take() { return parameter_.exchange(kNone, std::memory_order_relaxed); }

  private:
    std::atomic<int> parameter_{kNone};
};

}  // namespace state
