#pragma once

#include "devices/controlregistry.h"
#include "operations/kind.h"
#include "operations/workers.h"
#include "testing/fakeinstrument.h"

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tov::testing {

/// An instrument, the adapters that an application made from it, and what must come of each thing that they do. Every
/// step is done to the adapters and to the model of them, and the two are compared when it is done.
class World
{
public:
    /// `workers` do the steps.
    explicit World(Workers& workers);
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    /// Does what each of the bytes of `input` stands for. Ends the program with what happened so far when adapters and
    /// model disagree.
    void run(std::span<const std::uint8_t> input);

private:
    static constexpr int observersOfEach = 3;

    /// What the input says of one step.
    struct Step
    {
        unsigned int verb = 0;
        int thread = 0;
        unsigned int target = 0;
        unsigned int which = 0;
        unsigned int argument = 0;
    };

    /// What the model knows of a kind's control.
    struct Slot
    {
        const Kind* kind = nullptr;
        bool present = false;
        Offered offered;
        float temperature = 20;
        std::error_code error;
        bool later = false;
        bool throws = false;
        bool available = true;
    };

    /// What the model knows of an observer that the application gave an adapter.
    struct Observer
    {
        std::shared_ptr<void> object;
        int number = 0;
        int times = 0;         // in the list or table
        int registered = 0;    // with the control that is offered now, by a registration of its own
        bool attached = false; // as the table remembers it
    };

    /// What the model knows of an adapter.
    struct Adapter
    {
        Slot* slot = nullptr;
        Held held;
        int registered = 0; // with the control that is offered now
        std::string snapshot;
        std::vector<Observer> observers{observersOfEach};
        std::vector<int> order; // numbers in the list of observers
    };

    void step(const Step& next);
    void interrupt();
    std::optional<Step> take();

    void create(Slot& slot);
    void call(Adapter& adapter, const Step& step);
    void notify(Slot& slot, const Step& step);
    void release(Slot& slot, bool announced);
    void offer(Slot& slot, bool announced);
    void announceRelease(Adapter& adapter);
    void announceOffer(Adapter& adapter);
    void addObserver(Adapter& adapter, Observer& observer);
    void removeObserver(Adapter& adapter, Observer& observer);
    void copy(Adapter& adapter, bool move);
    void destroy(std::list<Adapter>::iterator adapter);
    void behave(Slot& slot, unsigned int how);

    void compare();
    void refresh(Adapter& adapter);
    void expectTold(const Adapter& adapter, const std::string& what, int registrations);
    Slot& slotOf(unsigned int target);
    Adapter* adapterOf(unsigned int target);
    std::vector<Adapter*> adaptersOf(const Slot& slot);
    [[noreturn]] void fail(const std::string& what) const;

    Workers& m_workers;
    FakeInstrument m_instrument;
    std::vector<Slot> m_slots;
    std::list<Adapter> m_adapters;
    std::vector<std::weak_ptr<void>> m_released;
    std::vector<std::shared_ptr<void>> m_kept; // by a seeded bug

    std::span<const std::uint8_t> m_input;
    unsigned int m_firstKind = 0;
    unsigned int m_kindCount = 1;
    std::vector<std::string> m_done;
    int m_numbers = 0; // given to observers

    bool m_mayThrow = false;      // the instrument, in what it is called for now
    bool m_interruptible = false; // by the next step, once
    bool m_atAnswer = false;      // when an answer comes later: before that, not when the operation is called

    std::shared_ptr<Journal> m_journal = std::make_shared<Journal>();
    std::vector<std::string> m_expectedCalls;
    Told m_told;
    Told m_expectedTold;
};

} // namespace tov::testing
