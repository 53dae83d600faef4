#pragma once
// ValAdaptor<T>: what a value widget binds to. It reads and proposes a T and is observed for changes,
// whatever actually holds the value: a ValServer<T>, or a parameter (GenericParam), possibly of another
// numeric type.
//
// Several adaptors may sit on one source, and several observers on one adaptor; a change made through any
// of them reaches every observer of every adaptor on that source. The observer that proposed a change (the
// `origin` passed to setValue) is not told of it, since it shows that value already and telling it could
// start a loop, except when the source stored something else (a range clamped it, a constraint corrected
// it, a choice refused it): then the origin is told, so that it shows what was really stored.
//
// Changes the source makes while a set is under way (a handler that snaps the value) are reported once,
// after the set, with the final value.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"
#include "toolkit/support/RefCount.h"
#include "toolkit/support/ValObserverClient.h"
#include "toolkit/support/ValServer.h"

#include <utility>

namespace GenericParam {
class iParam;
}

template <typename T>
class ValAdaptor : public iObject, public ValSubject {
public:
    virtual T getValue() const = 0;

    void setValue(const T& value, DataChangeType type = kDataChangeSet, ValObserverClient* origin = nullptr)
    {
        const bool outerSetting = m_setting;
        const bool outerChanged = m_changedDuringSet;
        m_setting = true;
        m_changedDuringSet = false;
        Cv::DestructionWatch::Scope scope(m_watch);
        writeToSource(value, type);
        if (scope.ownerGone())
            return;
        const bool changed = m_changedDuringSet;
        m_setting = outerSetting;
        m_changedDuringSet = outerChanged || changed;

        const bool corrected = !(getValue() == value);
        if (changed)
            notifyObservers(type, corrected ? nullptr : origin);
        else if (corrected && origin)
            notifyObserver(*origin, type);
    }

protected:
    virtual void writeToSource(const T& value, DataChangeType type) = 0;

    // For subclasses: the source reports a change, whoever made it.
    void sourceChanged(DataChangeType type)
    {
        if (m_setting)
            m_changedDuringSet = true; // reported once the set is over
        else
            notifyObservers(type);
    }

private:
    bool m_setting = false;
    bool m_changedDuringSet = false;
};

// An adaptor over a shared ValServer<T>, which it keeps alive.
template <typename T>
class ServerValAdaptor : public ValAdaptor<T>, private ValObserverClient {
public:
    explicit ServerValAdaptor(Cv::Ptr<ValServer<T>> server) : m_server(std::move(server))
    {
        if (m_server)
            m_server->addObserver(*this);
    }
    ~ServerValAdaptor() override { stopObservingAll(); }

    T getValue() const override { return m_server ? m_server->getValue() : T(); }
    const Cv::Ptr<ValServer<T>>& getServer() const { return m_server; }

protected:
    void writeToSource(const T& value, DataChangeType type) override
    {
        if (m_server)
            m_server->setValue(value, type);
    }

private:
    void handleValueChange(ValSubject&, DataChangeType type) override { this->sourceChanged(type); }

    Cv::Ptr<ValServer<T>> m_server;
};

template <typename T>
Cv::Ptr<ValAdaptor<T>> makeServerAdaptor(Cv::Ptr<ValServer<T>> server)
{
    return Cv::Ptr<ValAdaptor<T>>(new ServerValAdaptor<T>(std::move(server)));
}

// An adaptor over a parameter, converting where the kinds differ. Defined for
//   int:    IntParam, DoubleParam (rounded to nearest, saturating), ChoiceParam (the choice's value)
//   double: DoubleParam, IntParam (a fraction set on an IntParam is rounded by the parameter)
//   bool:   BoolParam
//   LightweightString<wchar_t>: any parameter, through its text form
// Answers null when the parameter is null or of a kind the type does not fit.
// The adaptor keeps the parameter alive and stops listening to it when destroyed.
template <typename T>
Cv::Ptr<ValAdaptor<T>> makeParamAdaptor(const Cv::Ptr<GenericParam::iParam>& param);

extern template Cv::Ptr<ValAdaptor<int>> makeParamAdaptor<int>(const Cv::Ptr<GenericParam::iParam>&);
extern template Cv::Ptr<ValAdaptor<double>> makeParamAdaptor<double>(const Cv::Ptr<GenericParam::iParam>&);
extern template Cv::Ptr<ValAdaptor<bool>> makeParamAdaptor<bool>(const Cv::Ptr<GenericParam::iParam>&);
extern template Cv::Ptr<ValAdaptor<LightweightString<wchar_t>>>
makeParamAdaptor<LightweightString<wchar_t>>(const Cv::Ptr<GenericParam::iParam>&);
