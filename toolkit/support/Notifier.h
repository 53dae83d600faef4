#pragma once
// Notification: a subject (a notifier) keeps a list of listeners and tells each of them, synchronously and on the
// reporting thread, about every notification it registered for. A notification is a value (a NotifyMsg for the
// plain Notifier) plus an integer type code.
//
// Rules every notifier keeps:
//   - Registering answers a guard; dropping the last reference to it (or calling Guard::release) removes the
//     listener. Once the removal has returned, the listener is never called again, from any thread.
//   - The listener list is guarded by a critical section that is held while listeners run. It is recursive, so
//     a listener may notify again (a nested round), or add and remove listeners.
//   - A listener removed during a round is not called afterwards, in that round or in any round around it.
//   - A listener added during a round is not called in that round; it hears the next one.
//   - A notifier may be destroyed while guards of it live on (releasing them then does nothing), and even by a
//     listener during a round (the rest of the round is skipped).

#include "toolkit/support/CriticalSection.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/RefCount.h"

#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

// A listener: execute() is called with each value it hears.
template <typename R, typename A> class iCallbackBase : public iObject {
public:
    virtual R execute(const A& value) = 0;
};

namespace Cv {

// Undoes a registration when the last reference to it goes, or earlier through release().
class Guard : public iObject {
public:
    explicit Guard(std::function<void()> undo)
        : m_undo(std::move(undo))
    {
    }
    ~Guard() override { release(); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    // Safe to call more than once, and from within the undo itself (a listener that owns its own guard and
    // dies as its registration goes); the undo runs once. `this` is not touched after the undo, which may have
    // destroyed the guard.
    void release()
    {
        if (m_released.exchange(true, std::memory_order_acq_rel))
            return;
        std::function<void()> undo = std::move(m_undo);
        if (undo)
            undo();
    }
    bool isReleased() const { return m_released.load(std::memory_order_acquire); }

private:
    std::function<void()> m_undo;
    std::atomic<bool> m_released { false };
};

// A listener made of a function. A function that returns nothing answers 0.
template <typename A, typename F> Ptr<iCallbackBase<int, A>> makeListener(F function)
{
    class FunctionListener : public iCallbackBase<int, A> {
    public:
        explicit FunctionListener(F f)
            : m_function(std::move(f))
        {
        }
        int execute(const A& value) override
        {
            if constexpr (std::is_void_v<std::invoke_result_t<F&, const A&>>) {
                m_function(value);
                return 0;
            } else {
                return static_cast<int>(m_function(value));
            }
        }

    private:
        F m_function;
    };
    return Ptr<iCallbackBase<int, A>>(new FunctionListener(std::move(function)));
}

// A listener that calls a method of an object. The object must release the guard before it dies.
template <typename Object, typename A>
Ptr<iCallbackBase<int, A>> makeListener(Object* object, int (Object::*method)(const A&))
{
    return makeListener<A>([object, method](const A& value) { return (object->*method)(value); });
}

} // namespace Cv

// The value of the plain Notifier: a narrow message text, an attached object, or both.
class NotifyMsg {
public:
    NotifyMsg() = default;
    NotifyMsg(const char* message)
        : m_message(message)
    {
    }
    NotifyMsg(LightweightString<char> message)
        : m_message(std::move(message))
    {
    }
    NotifyMsg(Cv::Ptr<iObject> object)
        : m_object(std::move(object))
    {
    }
    template <std::derived_from<iObject> U>
    NotifyMsg(const Cv::Ptr<U>& object)
        : m_object(object)
    {
    }
    NotifyMsg(LightweightString<char> message, Cv::Ptr<iObject> object)
        : m_message(std::move(message))
        , m_object(std::move(object))
    {
    }

    const LightweightString<char>& getMessage() const { return m_message; }
    const Cv::Ptr<iObject>& getObject() const { return m_object; }
    // The attached object as the type the listener expects; null when absent or of another type.
    template <typename U> Cv::Ptr<U> getObjectAs() const { return m_object.template dynamicCast<U>(); }
    bool empty() const { return m_message.empty() && !m_object; }

private:
    LightweightString<char> m_message;
    Cv::Ptr<iObject> m_object;
};

class CallbackInvokerBase {
public:
    // The type of a registration that hears every notification.
    static constexpr int anyType = -1;

    static bool typeMatch(int registeredType, int issuedType)
    {
        return registeredType == anyType || registeredType == issuedType;
    }
};

// The type-independent part of every notifier: the guarded listener list, registration and delivery rounds.
class NotifierBase {
public:
    static constexpr int allTypes = CallbackInvokerBase::anyType;

    NotifierBase() = default;
    // A copy is a new subject: it starts with no listeners, and assignment keeps each side's own.
    NotifierBase(const NotifierBase&) = default;
    NotifierBase(NotifierBase&&) = default;
    NotifierBase& operator=(const NotifierBase&) = default;
    NotifierBase& operator=(NotifierBase&&) = default;
    virtual ~NotifierBase();

    size_t getNumListeners() const;
    void removeAllListeners();

protected:
    using Invoke = void (*)(void* listener, const void* value);

    // The holder keeps the listener alive; `listener` is the same object as the type the invoker expects.
    Cv::Ptr<Cv::Guard> addRecord(Cv::Ptr<iObject> holder, void* listener, int type);
    bool removeRecords(const void* listener);
    void deliver(int type, Invoke invoke, const void* value) const;

private:
    struct Table;
    // The listeners belong to this notifier, not to its value: a copy or a moved-to notifier starts with an
    // empty table, and assignment leaves each side its own.
    struct OwnTable : std::shared_ptr<Table> {
        OwnTable();
        OwnTable(const OwnTable&) : OwnTable() {}
        OwnTable& operator=(const OwnTable&) { return *this; }
    };

    OwnTable m_table;
};

template <typename T> class GenericNotifier : public NotifierBase {
public:
    using Listener = iCallbackBase<int, T>;

    // Hears every notification.
    [[nodiscard]] Cv::Ptr<Cv::Guard> addListener(const Cv::Ptr<Listener>& listener)
    {
        return registerNotification(listener, allTypes);
    }
    // Hears the notifications of one type (or all, with allTypes). A null listener answers a null guard.
    [[nodiscard]] Cv::Ptr<Cv::Guard> registerNotification(const Cv::Ptr<Listener>& listener, int type)
    {
        if (!listener)
            return {};
        return addRecord(Cv::Ptr<iObject>(listener), listener.get(), type);
    }
    // Removes every registration of the listener; answers whether there was one.
    bool removeListener(const Cv::Ptr<Listener>& listener) { return removeRecords(listener.get()); }

    // The notification entry point; a subject may override it to filter or record what it reports.
    virtual void issueNotification(const T& value, int type) { call(value, type); }
    // Delivers to the listeners of the type, bypassing any override of issueNotification.
    void call(const T& value, int type) const { deliver(type, &invokeListener, &value); }

private:
    static void invokeListener(void* listener, const void* value)
    {
        static_cast<Listener*>(listener)->execute(*static_cast<const T*>(value));
    }
};

// The plain notifier, whose value is a NotifyMsg.
class Notifier : public GenericNotifier<NotifyMsg> { };

// Notification types known by name. A name is given its code the first time it is asked for and keeps it for
// the life of the process. Named codes start at firstType, above the small codes that notifiers choose for
// themselves (a catalogue's 10, 11 and 12), so the two never meet.
class NotifyMsgTypeDictionary {
public:
    static constexpr int noType = 0;
    static constexpr int firstType = 0x10000;
    // The type with which user-interface state changes (user actions, a change of video hardware) are reported.
    static constexpr const char* uiStateChangedMsg = "ui_state_changed";

    static NotifyMsgTypeDictionary& instance();

    NotifyMsgTypeDictionary();
    ~NotifyMsgTypeDictionary();
    NotifyMsgTypeDictionary(const NotifyMsgTypeDictionary&) = delete;
    NotifyMsgTypeDictionary& operator=(const NotifyMsgTypeDictionary&) = delete;

    // The code of the name, registering it on first use; noType for an empty name.
    int getType(const LightweightString<char>& name);
    // The code of a registered name, or noType.
    int findType(const LightweightString<char>& name) const;
    // The name of a code, or empty.
    LightweightString<char> getName(int type) const;

    int getUIStateChangedType() { return getType(uiStateChangedMsg); }

private:
    struct State;
    std::unique_ptr<State> m_state;
};
