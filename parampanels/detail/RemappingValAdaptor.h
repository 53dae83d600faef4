#pragma once
// RemappingValAdaptor: lets a menu, which speaks in positions, edit a choice parameter, which stores values.
// Position n stands for the n-th choice's value; a value that is no choice's (no choice made yet) shows as
// position -1, and a position outside the list is not stored.

#include "toolkit/support/ValAdaptor.h"
#include "toolkit/support/params/ChoiceParam.h"

class RemappingValAdaptor : public ValAdaptor<int>, private ValObserverClient {
public:
    explicit RemappingValAdaptor(Cv::Ptr<GenericParam::ChoiceParam> choice);
    ~RemappingValAdaptor() override;

    int getValue() const override;

protected:
    void writeToSource(const int& position, DataChangeType type) override;

private:
    void handleValueChange(ValSubject& source, DataChangeType type) override;

    Cv::Ptr<GenericParam::ChoiceParam> m_choice;
    // The parameter's own adaptor, in values: it does the listening.
    Cv::Ptr<ValAdaptor<int>> m_values;
};
