#include "parampanels/detail/RemappingValAdaptor.h"

RemappingValAdaptor::RemappingValAdaptor(Cv::Ptr<GenericParam::ChoiceParam> choice)
    : m_choice(std::move(choice))
    , m_values(makeParamAdaptor<int>(m_choice))
{
    if (m_values)
        m_values->addObserver(*this);
}

RemappingValAdaptor::~RemappingValAdaptor()
{
    stopObservingAll();
}

int RemappingValAdaptor::getValue() const
{
    if (!m_choice)
        return -1;
    const unsigned index = m_choice->indexOfValue(m_choice->getValue());
    return index == GenericParam::ChoiceParam::npos ? -1 : static_cast<int>(index);
}

void RemappingValAdaptor::writeToSource(const int& position, DataChangeType type)
{
    if (!m_values || position < 0 || static_cast<unsigned>(position) >= m_choice->getNumChoices())
        return;
    // Choice values are unsigned; the parameter's integer adaptor carries their bits unchanged.
    m_values->setValue(static_cast<int>(m_choice->getChoices()[static_cast<size_t>(position)].value), type);
}

void RemappingValAdaptor::handleValueChange(ValSubject&, DataChangeType type)
{
    sourceChanged(type);
}
