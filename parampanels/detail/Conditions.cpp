#include "parampanels/detail/Conditions.h"

#include "parampanels/UIBuilderParams.h"
#include "toolkit/support/AttribValuePair.h"
#include "toolkit/support/DataConvert.h"

// ---- ActiveConstraint

ActiveConstraint::ActiveConstraint(Requirements requirements, Glob* row)
    : m_requirements(std::move(requirements))
    , m_row(row)
{
}

Cv::Ptr<ActiveConstraint> ActiveConstraint::fromText(std::string_view text, Glob* row)
{
    Requirements requirements;
    // A name given twice keeps the value written last.
    for (const Cv::AttribValuePair& pair : Cv::AttribValuePair::vecFromString(text, '=', ','))
        requirements.insert_or_assign(pair.name(), pair.value());
    if (requirements.empty())
        return {};
    return Cv::make<ActiveConstraint>(std::move(requirements), row);
}

bool ActiveConstraint::isMet(const UIBuilder::ParamList& params) const
{
    for (const auto& [name, required] : m_requirements) {
        const Cv::Ptr<GenericParam::iParam> param = UIBuilder::findParam(params, name);
        // A name that matches nothing can never be satisfied: the row stays disabled.
        if (!param || toUTF8(param->getValueAsString().view()) != required)
            return false;
    }
    return true;
}

void ActiveConstraint::evaluate(const UIBuilder::ParamList& params)
{
    const bool met = isMet(params);
    if (Glob* row = m_row.get())
        row->setEnabled(met, true);
}

// ---- VisibilityConstraint

VisibilityConstraint::VisibilityConstraint(LightweightString<wchar_t> required, Glob* row)
    : m_required(std::move(required))
    , m_row(row)
{
}

void VisibilityConstraint::handleValueChange(const LightweightString<wchar_t>& newValue)
{
    Glob* row = m_row.get();
    if (!row)
        return;
    const bool visible = newValue == m_required;
    row->setVisible(visible);
    // A hidden row cannot repaint the area it leaves; the window around it must.
    if (visible)
        row->redraw();
    else
        row->root()->redraw();
}

// ---- Bounds

BoundConstraint::BoundConstraint(Cv::Ptr<GenericParam::iParam> other)
    : m_other(std::move(other))
{
}

template <typename Compare>
LightweightString<wchar_t> BoundConstraint::apply(const LightweightString<wchar_t>& proposed,
                                                  Compare outOfBounds) const
{
    if (!m_other)
        return proposed;
    const LightweightString<char> type = m_other->getValueTypeName();
    if (type != "int" && type != "double")
        return proposed;
    const LightweightString<wchar_t> otherText = m_other->getValueAsString();
    double proposedValue = 0.0;
    double otherValue = 0.0;
    DataConvert::convert(proposed.view(), proposedValue);
    DataConvert::convert(otherText.view(), otherValue);
    return outOfBounds(proposedValue, otherValue) ? otherText : proposed;
}

LightweightString<wchar_t> MinValueConstraint::constrain(const LightweightString<wchar_t>& proposed)
{
    return apply(proposed, [](double value, double bound) { return bound > value; });
}

LightweightString<wchar_t> MaxValueConstraint::constrain(const LightweightString<wchar_t>& proposed)
{
    return apply(proposed, [](double value, double bound) { return value > bound; });
}

// ---- ChangeBroadcaster

ChangeBroadcaster::ChangeBroadcaster(LightweightString<char> paramName, UIBuilder::Params* target)
    : m_paramName(std::move(paramName))
    , m_target(target)
{
}

void ChangeBroadcaster::handleValueChange(const LightweightString<wchar_t>&)
{
    if (m_target)
        m_target->handleParameterModification(NotifyMsg(m_paramName));
}

// ---- Attaching

void attachConditions(const EntryConditions& entry, const UIBuilder::ParamList& params,
                      const std::map<LightweightString<char>, Glob*>& widgets,
                      std::vector<Cv::Ptr<UIBuilder::iPostCondition>>& postConditions,
                      std::vector<Cv::Ptr<BoundConstraint>>* bounds)
{
    const auto rowIt = widgets.find(entry.name);
    if (rowIt == widgets.end())
        return;
    Glob* row = rowIt->second;

    if (Cv::Ptr<ActiveConstraint> active = ActiveConstraint::fromText(entry.activeIf.view(), row))
        postConditions.push_back(std::move(active));

    // One pair only: a "," belongs to the required value ("mode=2,3").
    const Cv::AttribValuePair visibleIf(entry.visibleIf.view(), '=');
    if (visibleIf.valid()) {
        if (const Cv::Ptr<GenericParam::iParam> controller = UIBuilder::findParam(params, visibleIf.name()))
            controller->addValueChangeHandler(
                Cv::make<VisibilityConstraint>(fromUTF8(visibleIf.value().view()), row));
    }

    const Cv::Ptr<GenericParam::iParam> own = UIBuilder::findParam(params, entry.name);
    if (!own)
        return;
    const auto addBound = [&](Cv::Ptr<BoundConstraint> bound) {
        own->addValueConstraint(bound);
        if (bounds)
            bounds->push_back(std::move(bound));
    };
    if (!entry.lowerBound.empty()) {
        if (Cv::Ptr<GenericParam::iParam> other = UIBuilder::findParam(params, entry.lowerBound))
            addBound(Cv::make<MinValueConstraint>(std::move(other)));
    }
    if (!entry.upperBound.empty()) {
        if (Cv::Ptr<GenericParam::iParam> other = UIBuilder::findParam(params, entry.upperBound))
            addBound(Cv::make<MaxValueConstraint>(std::move(other)));
    }
}
