#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tov::testing {

/// What was expected of a scenario and did not hold.
class Complaints
{
public:
    void expect(bool holds, const char* what)
    {
        if (!holds)
            m_text += std::string("    not so: ") + what + '\n';
    }

    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

/// A story that does each of its steps by `attempt()`: whatever goes wrong in it, all must be well after it.
struct Scenario
{
    std::string name;
    std::function<void(Complaints&)> run;
};

/// Each operation of each adapter, called on it, on a copy and on what was moved from it.
std::vector<Scenario> operationScenarios();

/// The life of each adapter that is registered, from its creation by the registry over a release and an offer to its
/// end, with observers if it has any.
std::vector<Scenario> lifeScenarios();

/// What belongs to no adapter.
std::vector<Scenario> otherScenarios();

/// Each must be found to go wrong.
std::vector<Scenario> brokenOperationScenarios();
std::vector<Scenario> brokenLifeScenarios();

} // namespace tov::testing
