#pragma once
// Cv::DestructionWatch: lets a member function that calls out to someone else's code (a handler, an
// observer) find out afterwards whether that code destroyed the object, before touching `this` again.
//
//     Cv::DestructionWatch::Scope scope(m_watch);
//     handler->call();
//     if (scope.ownerGone())
//         return; // `this` is gone: touch nothing
//
// Scopes nest (a handler may call back into the same object); the destructor marks every open scope.
// Costs nothing until a scope is open. Single-threaded, like the objects that use it.

namespace Cv {

class DestructionWatch {
public:
    class Scope {
    public:
        explicit Scope(DestructionWatch& watch) : m_watch(&watch), m_outer(watch.m_innermost)
        {
            watch.m_innermost = this;
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope()
        {
            if (!m_gone)
                m_watch->m_innermost = m_outer;
        }
        bool ownerGone() const { return m_gone; }

    private:
        friend class DestructionWatch;
        DestructionWatch* m_watch = nullptr;
        Scope* m_outer = nullptr;
        bool m_gone = false;
    };

    DestructionWatch() = default;
    // A copied object is a different object: it starts with no open scopes.
    DestructionWatch(const DestructionWatch&) noexcept {}
    DestructionWatch& operator=(const DestructionWatch&) noexcept { return *this; }
    ~DestructionWatch()
    {
        for (Scope* s = m_innermost; s; s = s->m_outer)
            s->m_gone = true;
    }

private:
    Scope* m_innermost = nullptr;
};

} // namespace Cv
