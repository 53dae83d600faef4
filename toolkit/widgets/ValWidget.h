#pragma once
// ValWidget<T>: the part of a widget that shows a value of type T held elsewhere.
//
// A value widget is bound to a ValAdaptor<T> (a ValServer, a parameter, anything the adaptor bridges). From
// then on the adaptor is the truth: what the user does is proposed to it with publishValue(), and every
// change made elsewhere (code, another widget bound to the same value, a settings reload) arrives in
// showValue(). Two widgets bound to one value therefore always show the same thing.
//
// A widget that is not bound simply keeps its own value; binding is optional and costs one pointer.
//
//   event                                         | what happens
//   ----------------------------------------------+----------------------------------------------------------
//   setDataAdaptor(a)                             | observes a, and shows a's current value at once
//   the user changes the widget                   | publishValue(v): a->setValue(v, type, this); this widget
//                                                 | is not told back unless the source stored something else
//   the value changes anywhere else               | showValue(new value, type)
//   the adaptor is destroyed (or unbound)         | the widget keeps showing the last value, unbound
//
// The adaptor is kept alive by the widget (Cv::Ptr), so a value made only for one widget needs no other
// owner. Setters of a widget that change only what it shows (setPosition, setValue from code) do not write
// through the adaptor: to change the value itself from code, set it on the adaptor or its source.

#include "toolkit/support/Ptr.h"
#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/ValObserverClient.h"

#include <utility>

template <typename T>
class ValWidget : public ValObserverClient {
public:
    using value_type = T;

    ValWidget() = default;
    // A copy shows the same value but is bound to nothing: binding is a link between two objects.
    ValWidget(const ValWidget&) noexcept : ValObserverClient() {}
    ValWidget& operator=(const ValWidget&) noexcept { return *this; }
    ~ValWidget() override { unbind(); }

    // Binds to `adaptor` (null unbinds) and shows its value.
    void setDataAdaptor(Cv::Ptr<ValAdaptor<T>> adaptor)
    {
        if (adaptor == m_adaptor)
            return;
        unbind();
        m_adaptor = std::move(adaptor);
        if (!m_adaptor)
            return;
        m_adaptor->addObserver(*this);
        showValue(m_adaptor->getValue(), kDataChangeSet);
    }
    const Cv::Ptr<ValAdaptor<T>>& getDataAdaptor() const { return m_adaptor; }
    bool isBound() const { return static_cast<bool>(m_adaptor); }
    void unbind()
    {
        if (m_adaptor)
            m_adaptor->removeObserver(*this);
        m_adaptor = nullptr;
    }

protected:
    // Show `value`; the widget's own state follows it. Called on binding and on every change made elsewhere.
    virtual void showValue(const T& value, DataChangeType type) = 0;

    // The user made a change: hand it to the bound value. When the source corrects it (a range, a
    // constraint), showValue is called with what was stored. Does nothing when unbound. The caller must
    // not assume it is still alive afterwards if an observer may destroy widgets: check with a GlobWatch.
    void publishValue(const T& value, DataChangeType type)
    {
        if (!m_adaptor)
            return;
        // Held for the call: an observer may unbind this widget while the adaptor is still setting.
        Cv::Ptr<ValAdaptor<T>> keep = m_adaptor;
        keep->setValue(value, type, this);
    }

private:
    void handleValueChange(ValSubject& source, DataChangeType type) override
    {
        if (m_adaptor && &source == static_cast<ValSubject*>(m_adaptor.get()))
            showValue(m_adaptor->getValue(), type);
    }
    void handleSubjectDestroyed(ValSubject& source) override
    {
        // The widget holds a reference, so this means the adaptor was destroyed by force: forget it
        // without releasing it a second time.
        if (m_adaptor && &source == static_cast<ValSubject*>(m_adaptor.get()))
            (void)m_adaptor.detach();
    }

    Cv::Ptr<ValAdaptor<T>> m_adaptor;
};
