#pragma once

#include "testing/exactly.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

namespace tov::testing {

/// What is expected of an enumeration: the SDK's number of each of its own, and what others become.
struct EnumerationNumbers
{
    std::map<int, int> toSdk;
    int unknownReads;
    int unknownIsSent;
};

/// Reads and sends every number from -2 to 300, as far as `Number`, the SDK's type, goes. `sdkSetter` is the call of
/// the SDK up to the number; `read` and `send` call the adapter with the enumeration's number.
template <typename Number, typename Fake, typename Read, typename Send>
void walkEnumeration(Fake& fake, const std::string& sdkGetter, const std::string& sdkSetter,
                     const EnumerationNumbers& numbers, Read read, Send send)
{
    std::map<int, int> fromSdk;
    for (const auto& [own, sdk] : numbers.toSdk)
        fromSdk[sdk] = own;

    for (int number = -2; number <= 300; ++number) {
        if (number >= std::numeric_limits<Number>::min() && number <= std::numeric_limits<Number>::max()) {
            fake.answer(sdkGetter, static_cast<Number>(number));
            EXPECT_EQ(read(), fromSdk.contains(number) ? fromSdk[number] : numbers.unknownReads)
                << sdkGetter << " of " << number;
        }
        send(number);
        const int sent = numbers.toSdk.contains(number) ? numbers.toSdk.at(number) : numbers.unknownIsSent;
        EXPECT_EQ(fake.calls().back(), sdkSetter + exactly(static_cast<Number>(sent)) + ")") << number;
    }
}

/// The same for a getter and a setter of the names `name` and `setName`.
template <typename Number = int, typename Adapter, typename Fake, typename Enumeration>
void walkEnumeration(Adapter& adapter, Fake& fake, const std::string& name, Enumeration (Adapter::*getter)() const,
                     void (Adapter::*setter)(Enumeration), const EnumerationNumbers& numbers)
{
    std::string setName = "set" + name + "(";
    setName[3] = static_cast<char>(setName[3] - 'a' + 'A');
    walkEnumeration<Number>(
        fake, name, setName, numbers, [&] { return static_cast<int>((adapter.*getter)()); },
        [&](int number) { (adapter.*setter)(static_cast<Enumeration>(number)); });
}

} // namespace tov::testing
