// A host for tests with configurable answers. It records every request.
#pragma once

#include <map>
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

    std::vector<Call> calls;
    std::map<VstInt32, VstIntPtr> answers = {{audioMasterVersion, kVstVersion}};  // 0 for others

  private:
    inline static TestHost* current_ = nullptr;
};
