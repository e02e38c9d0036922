#include "completeness.h"

#include "devices/controls.h"
#include "service/calibration/sdkcalibrationcontrolhandle.h"
#include "service/calibration/sdkfactorycorrectioncontrol.h"
#include "service/calibration/sdkyqfactorypowercalibrationcontrol.h"
#include "service/calibration/sdkyqifswcalibrationcontrol.h"
#include "service/memory/sdkfilememorycontrol.h"
#include "service/memory/sdkmemoryoperationscontrol.h"
#include "service/memory/sdkmemoryusbid.h"
#include "service/memory/sdkpotentiometerscontrol.h"
#include "service/memory/sdkserialnumbercontrol.h"
#include "service/memory/sdksystemtermscontrol.h"
#include "service/monitoring/sdktemperaturecontrol.h"
#include "service/tuning/sdkkz515powercontrol.h"
#include "service/tuning/sdkkz515synthesiscontrol.h"
#include "service/tuning/sdkloleakagecontrol.h"
#include "service/tuning/sdkulkpowercontrol.h"
#include "service/tuning/sdkulksynthesiscontrol.h"
#include "service/tuning/sdkwn0807powercontrol.h"
#include "service/tuning/sdkwn0807synthesiscontrol.h"
#include "service/tuning/sdkyqsynthesiscontrol.h"

#include <QMetaMethod>
#include <QObject>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <typeinfo>

#include <cxxabi.h>

namespace tov::testing {

namespace {

using Names = std::multiset<std::string>;

std::string className(const std::type_index& type)
{
    int status = 0;
    char* const demangled = abi::__cxa_demangle(type.name(), nullptr, nullptr, &status);
    const std::string name = status == 0 ? demangled : type.name();
    std::free(demangled);
    return name.substr(name.rfind(':') + 1);
}

std::map<std::string, Names> recordedOperations()
{
    std::ifstream file(PUBLIC_OPERATIONS);
    std::map<std::string, Names> recorded;
    std::string adapter;
    std::string operation;
    while (file >> adapter >> operation)
        recorded[adapter].insert(operation);
    if (recorded.empty())
        throw std::runtime_error("no record of the public operations in " PUBLIC_OPERATIONS);
    return recorded;
}

/// What is public of a class for Qt's sake.
Names ofQt(const QMetaObject& meta)
{
    Names names = {"metaObject", "qt_metacall", "qt_metacast"};
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            names.insert(meta.method(i).name().toStdString());
    return names;
}

Names without(const Names& all, const Names& some)
{
    Names left;
    std::ranges::set_difference(all, some, std::inserter(left, left.end()));
    return left;
}

} // namespace

Completeness compareWithRecord(const Operations& table)
{
    auto recorded = recordedOperations();
    std::map<std::string, Names> rows;
    for (const Operation& row : table)
        rows[className(row.adapter)].insert(row.name.substr(0, row.name.find(' ')));

    Completeness found;
    std::set<std::string> seen;
    const auto look = [&]<typename SdkIface, typename Exposed, typename Adapter>(
                          const devices::ControlKind<SdkIface, Exposed, Adapter>& /*kind*/) {
        ++found.kinds;
        const std::string adapter = className(typeid(Adapter));
        if (!seen.insert(adapter).second)
            return;
        Names operations = recorded[adapter];
        if constexpr (std::is_base_of_v<QObject, Adapter>)
            operations = without(operations, ofQt(Adapter::staticMetaObject));
        if (operations.empty())
            found.problems.push_back(adapter + " is not recorded");
        found.publicOperations += operations.size();
        for (const std::string& name : without(operations, rows[adapter]))
            found.problems.push_back(adapter + "::" + name + " has no row");
        for (const std::string& name : without(rows[adapter], operations))
            found.problems.push_back(adapter + "::" + name + " is no public operation that is recorded");
    };
    std::apply([&](const auto&... kind) { (look(kind), ...); }, devices::controls::kinds);
    return found;
}

} // namespace tov::testing
