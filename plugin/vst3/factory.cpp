// The factory, which lives as long as the module.
#include "plugin/vst3/factory.h"

#include <cstring>
#include <exception>
#include <string>

#include "platform/folders.h"
#include "platform/product.h"
#include "plugin/vst3/reference.h"
#include "plugin/vst3/shell.h"
#include "plugin/vst3/text.h"

namespace vst3 {

namespace {

constexpr const char* kCategories = kPlugTypeInstrumentSynth;

class Factory final : public IPluginFactory3 {
  public:
    // The bundle's folder of resources stands beside that of the module.
    Factory() { platform::setResourceFolder("../Resources/"); }

    tresult VST3_CALL queryInterface(const TUID iid, void** object) override {
        if (!object) return kInvalidArgument;
        *object = nullptr;
        const bool known = answers<FUnknown>(this, iid, object) ||
                           answers<IPluginFactory>(this, iid, object) ||
                           answers<IPluginFactory2>(this, iid, object) ||
                           answers<IPluginFactory3>(this, iid, object);
        return known ? kResultOk : kNoInterface;
    }
    uint32 VST3_CALL addRef() override { return references_.add(); }
    uint32 VST3_CALL release() override {
        const uint32 left = references_.remove();
        if (left == 1) context_.reset();  // nobody but the module
        return left;
    }

    tresult VST3_CALL getFactoryInfo(PFactoryInfo* info) override {
        if (!info) return kInvalidArgument;
        copyText(platform::kCompanyName, info->vendor);
        copyText(std::string("https://") + platform::kCompanyDomain, info->url);
        copyText(std::string("contact@") + platform::kCompanyDomain, info->email);
        info->flags = PFactoryInfo::kUnicode;
        return kResultOk;
    }
    int32 VST3_CALL countClasses() override { return 1; }

    tresult VST3_CALL getClassInfo(int32 index, PClassInfo* info) override {
        if (index != 0 || !info) return kInvalidArgument;
        describe(*info);
        return kResultOk;
    }
    tresult VST3_CALL getClassInfo2(int32 index, PClassInfo2* info) override {
        if (index != 0 || !info) return kInvalidArgument;
        describe(*info);
        describeFurther(*info);
        return kResultOk;
    }
    tresult VST3_CALL getClassInfoUnicode(int32 index, PClassInfoW* info) override {
        if (index != 0 || !info) return kInvalidArgument;
        describe(*info);
        describeFurther(*info);
        return kResultOk;
    }

    tresult VST3_CALL createInstance(FIDString cid, FIDString iid, void** object) override {
        if (!cid || !iid || !object) return kInvalidArgument;
        *object = nullptr;
        if (std::memcmp(cid, kClassId.data(), kClassId.size()) != 0) return kNoInterface;
        try {
            const Ref<Shell> shell(new Shell(context_.get()));
            return shell->queryInterface(reinterpret_cast<const uint8*>(iid), object);
        } catch (const std::exception&) {
            return kOutOfMemory;
        }
    }
    tresult VST3_CALL setHostContext(FUnknown* context) override {
        context_ = shared(context);
        return kResultOk;
    }

  private:
    template <typename Info>
    static void describe(Info& info) {
        std::memcpy(info.cid, kClassId.data(), kClassId.size());
        info.cardinality = kManyInstances;
        copyText(kAudioEffectClass, info.category);
        copyText(platform::kProductName, info.name);
    }
    template <typename Info>
    static void describeFurther(Info& info) {
        info.classFlags = 0;
        copyText(kCategories, info.subCategories);
        copyText(platform::kCompanyName, info.vendor);
        copyText(platform::productVersion(), info.version);
        copyText(kSdkVersion, info.sdkVersion);
    }

    ReferenceCount references_;
    Ref<FUnknown> context_;
};

}  // namespace

IPluginFactory* factory() {
    static Factory factory;
    factory.addRef();
    return &factory;
}

}  // namespace vst3
