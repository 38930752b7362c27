// A host for tests with configurable answers. It records every request.
#pragma once

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "plugin/vst2/vst2.h"

// The published callback does not identify the host, so only one may exist at a time.
class TestHost {
  public:
    struct Call {
        AEffect* effect;
        VstInt32 opcode;
        VstInt32 index;
        VstIntPtr value;
        void* ptr;
        float opt;
    };

    TestHost() { current_ = this; }
    ~TestHost() { current_ = nullptr; }
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    static VstIntPtr callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                              void* ptr, float opt) {
        current_->calls.push_back({effect, opcode, index, value, ptr, opt});
        const auto answer = current_->answers.find(opcode);
        return answer == current_->answers.end() ? 0 : answer->second;
    }

    // The gestures and sizes since the last call: "begin 1, automate 1 = 0.600, end 1, size 9 6, ",
    // with only the last of automations in a row.
    std::string told() {
        std::string told;
        for (std::size_t i = 0; i < calls.size(); ++i) {
            const Call& call = calls[i];
            const bool again = i + 1 < calls.size() && call.opcode == audioMasterAutomate &&
                               calls[i + 1].opcode == audioMasterAutomate &&
                               calls[i + 1].index == call.index;
            char text[64] = "";
            if (call.opcode == audioMasterBeginEdit)
                std::snprintf(text, sizeof text, "begin %d, ", call.index);
            if (call.opcode == audioMasterAutomate && !again)
                std::snprintf(text, sizeof text, "automate %d = %.3f, ", call.index, call.opt);
            if (call.opcode == audioMasterEndEdit)
                std::snprintf(text, sizeof text, "end %d, ", call.index);
            if (call.opcode == audioMasterSizeWindow)
                std::snprintf(text, sizeof text, "size %d %d, ", call.index,
                              static_cast<int>(call.value));
            told += text;
        }
        calls.clear();
        return told;
    }

    std::vector<Call> calls;
    std::map<VstInt32, VstIntPtr> answers = {{audioMasterVersion, kVstVersion}};  // 0 for others

  private:
    inline static TestHost* current_ = nullptr;
};
