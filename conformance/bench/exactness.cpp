#include "conformance/bench/exactness.h"

#include "sdk/ifactorycorrectioncontrol.h"
#include "sdk/itemperaturecontrol.h"
#include "sdk/service/calibrations/icalibrationcontroller.h"
#include "sdk/service/ifilememorycontrol.h"
#include "sdk/service/ikz515powercontrol.h"
#include "sdk/service/ikz515synthesiscontrol.h"
#include "sdk/service/iloleakagecontrol.h"
#include "sdk/service/imemoryoperationscontrol.h"
#include "sdk/service/imemoryserialnumbercontrol.h"
#include "sdk/service/imemoryusbidcontrol.h"
#include "sdk/service/ipotentiometerscontrol.h"
#include "sdk/service/isystemtermscontrol.h"
#include "sdk/service/iulkpowercontrol.h"
#include "sdk/service/iulksynthesiscontrol.h"
#include "sdk/service/iwn0807powermodulecontrol.h"
#include "sdk/service/iwn0807synthesiscontrol.h"
#include "sdk/service/iyqfactorypowercalibrationcontrol.h"
#include "sdk/service/iyqifswcalibrationcontrol.h"
#include "sdk/service/iyqsynthesiscontrol.h"

#include <iterator>
#include <tuple>
#include <typeinfo>

#if __has_include(<cxxabi.h>)
#include <cxxabi.h>
#endif

namespace tov::conformance {

namespace {

#if __has_include(<cxxabi.h>)

class AnyObject
{
public:
    AnyObject() = delete;
    virtual ~AnyObject() = default;
};

// Asks an object of any type for its type, which stands before its functions; so there is nothing to sanitize.
__attribute__((no_sanitize("undefined"))) Exactness exactness(const std::type_info& iface, void* control)
{
    const void* const* const functions = *static_cast<void***>(control);
    if (*std::prev(functions) == nullptr)
        return Exactness::Unknown;
    auto* const object = static_cast<AnyObject*>(control);
    void* part = dynamic_cast<void*>(object);
    const auto& wanted = dynamic_cast<const __cxxabiv1::__class_type_info&>(iface);
    return typeid(*object).__do_upcast(&wanted, &part) && part == control ? Exactness::Exact : Exactness::Different;
}

#else

Exactness exactness(const std::type_info& /*iface*/, void* /*control*/)
{
    return Exactness::Unknown;
}

#endif

template <typename SdkIface, typename... Types>
const std::type_info& typeOf(const devices::ControlKind<SdkIface, Types...>& /*kind*/)
{
    return typeid(SdkIface);
}

} // namespace

Exactness exactness(const devices::ControlName& kind, void* control)
{
    const std::type_info* iface = nullptr;
    const auto look = [&](const auto& each) {
        if (each == kind)
            iface = &typeOf(each);
    };
    std::apply([&](const auto&... each) { (look(each), ...); }, devices::controls::kinds);
    return iface != nullptr ? exactness(*iface, control) : Exactness::Unknown;
}

} // namespace tov::conformance
