#pragma once

#include "host/instrumentsession.h"
#include "host/toldadapter.h"
#include "provider/iconnection.h"
#include "testing/fakeinstrument.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tov::testing {

/// A connection to an instrument that the test releases and offers as it likes.
class FakeConnection final : public provider::IConnection
{
public:
    FakeConnection(std::shared_ptr<FakeInstrument> instrument, std::vector<std::string>& story)
        : m_instrument(std::move(instrument))
        , m_story(story)
    {
    }
    FakeConnection(const FakeConnection&) = delete;
    FakeConnection& operator=(const FakeConnection&) = delete;
    ~FakeConnection() override { m_story.emplace_back("closed"); }

    std::shared_ptr<sdk::IVna> instrument() override { return m_instrument; }
    void setListener(provider::IControlsListener* listener) override { m_listener = listener; }

    void tellOfRelease(std::shared_ptr<void> hold) { m_listener->onControlsAboutToBeReleased(std::move(hold)); }
    void tellOfOffer() { m_listener->onControlsOffered(); }

    // The same, told in the story.
    void release()
    {
        tellOfRelease(std::shared_ptr<void>(nullptr, [this](void* /*none*/) { m_story.emplace_back("released"); }));
    }
    void offer()
    {
        m_story.emplace_back("offered");
        tellOfOffer();
    }

private:
    const std::shared_ptr<FakeInstrument> m_instrument;
    std::vector<std::string>& m_story;
    provider::IControlsListener* m_listener = nullptr;
};

inline void onAnotherThread(const std::function<void()>& what)
{
    std::thread(what).join();
}

/// A session on a connection, with two adapters that are told.
class SessionOnAConnection : public ::testing::Test
{
protected:
    SessionOnAConnection()
    {
        session->control(host::Control<ToldAdapter>{{"first", {1, {}}}});
        session->control(host::Control<ToldAdapter>{{"second", {2, {}}}});
    }

    devices::ControlRegistry registryOfTwo()
    {
        devices::ControlRegistry registry;
        add(registry, 1, [this] { return std::make_shared<ToldAdapter>("first", story); });
        add(registry, 2, [this] { return std::make_shared<ToldAdapter>("second", story); });
        return registry;
    }

    std::vector<std::string> story;
    FakeConnection* connection = new FakeConnection(std::make_shared<FakeInstrument>(), story); // the session's
    std::unique_ptr<host::InstrumentSession> session =
        std::make_unique<host::InstrumentSession>(std::unique_ptr<provider::IConnection>(connection), registryOfTwo());
};

} // namespace tov::testing
