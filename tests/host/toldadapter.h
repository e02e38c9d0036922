#pragma once

#include "devices/controlregistry.h"
#include "devices/icontrollifecycleobserver.h"
#include "sdk/ivna.h"

#include <any>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tov::testing {

/// A registry with one kind of control, which `make` makes.
template <typename Make>
void add(devices::ControlRegistry& registry, std::uint64_t key, Make make)
{
    registry.addEntry(
        devices::ControlRegistry::ControlEntry<sdk::IVna>{key, [make](sdk::IVna*) { return std::any(make()); }});
}

/// An adapter that is told when the controls go and come.
class ToldAdapter : public devices::IControlLifecycleObserver
{
public:
    ToldAdapter(std::string name, std::vector<std::string>& story)
        : m_name(std::move(name))
        , m_story(story)
    {
    }
    void onControlsAboutToBeReleased() override { m_story.push_back(m_name + " lets go"); }
    void onControlsAvailable() override { m_story.push_back(m_name + " comes back"); }

private:
    std::string m_name;
    std::vector<std::string>& m_story;
};

} // namespace tov::testing
