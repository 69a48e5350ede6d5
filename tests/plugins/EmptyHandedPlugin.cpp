// A plug-in whose class factory never makes a decoder, each time in another way.

#include "codecs/plugin/VarnolitePluginSkeleton.h"

namespace {

using namespace VarnolitePlugin;

class EmptyHandedFactory final : public Counted<IClassFactory> {
public:
    Result VARNOLITE_CALL CreateInstance(IUnknown*, const Identifier&, void** object) override {
        switch (m_calls++) {
        case 0:
            *object = nullptr;
            return Success;
        case 1:
            // Leaves the place as it was.
            return Success;
        case 2:
            *object = nullptr;
            return NoInterface;
        default:
            // No success, and what is there is no object: whoever calls it ends badly.
            *object = m_nothing;
            return 1;
        }
    }
    Result VARNOLITE_CALL LockServer(std::int32_t) override { return NotImplemented; }

private:
    ~EmptyHandedFactory() override = default;

    int m_calls = 0;
    void* m_nothing[1] = {};
};

} // namespace

extern "C" VARNOLITE_EXPORT Result VARNOLITE_CALL DllGetClassObject(const Identifier&, const Identifier&,
                                                                    void** object) {
    *object = static_cast<IClassFactory*>(new EmptyHandedFactory);
    return Success;
}
