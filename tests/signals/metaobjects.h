#pragma once

#include <QMetaEnum>
#include <QMetaMethod>
#include <QMetaObject>
#include <QMetaProperty>

#include <string>
#include <vector>

namespace tov::testing {

/// What the class of `meta` adds to its base, in order: signals as "name(type name, ...)", anything else, which none
/// of the adapters has, by its kind.
inline std::vector<std::string> ownMembers(const QMetaObject& meta)
{
    std::vector<std::string> members;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        std::string text = method.name().toStdString() + "(";
        for (int parameter = 0; parameter < method.parameterCount(); ++parameter)
            text += (parameter > 0 ? ", " : "") + method.parameterTypeName(parameter).toStdString() + " "
                    + method.parameterNames().at(parameter).toStdString();
        members.push_back((method.methodType() == QMetaMethod::Signal ? "" : "no signal: ") + text + ")");
    }
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        members.push_back("property " + std::string(meta.property(i).name()));
    for (int i = meta.enumeratorOffset(); i < meta.enumeratorCount(); ++i)
        members.push_back("enumerator " + std::string(meta.enumerator(i).name()));
    return members;
}

} // namespace tov::testing
