#pragma once
// The conditions that tie the parameters of a described panel together, and the broadcaster that tells
// UIBuilder::Params of every change. Internal to the parameter panels.
//
//   "active if"               ActiveConstraint      post-condition of Params   enables or disables a row
//   "visible if"              VisibilityConstraint  handler on the named param shows or hides a row
//   "must not be lower than"  MinValueConstraint    constraint on its own param corrects a proposed value
//   "must not be higher than" MaxValueConstraint    constraint on its own param corrects a proposed value
//
// Values are compared as text, exactly: a bool by its text form ("true"), a choice by its number, not its
// label. Rows are held with their liveness stamp, so a parameter that outlives its panel does not touch a
// destroyed row.

#include "parampanels/UIBuilder.h"
#include "toolkit/ui/Glob.h"

#include <map>
#include <string_view>
#include <vector>

// "active if": every named parameter must hold its required text for the row to be enabled. The pairs are
// kept by name, so a name given twice keeps one value and they are checked in name order.
class ActiveConstraint : public UIBuilder::iPostCondition {
public:
    using Requirements = std::map<LightweightString<char>, LightweightString<char>>;

    ActiveConstraint(Requirements requirements, Glob* row);
    // From "a=1,b=true"; null when the text holds no valid pair.
    static Cv::Ptr<ActiveConstraint> fromText(std::string_view text, Glob* row);

    const Requirements& getRequirements() const { return m_requirements; }
    Glob* getRow() const { return m_row.get(); }
    // True when the row should be enabled for the values in `params`.
    bool isMet(const UIBuilder::ParamList& params) const;

    void evaluate(const UIBuilder::ParamList& params) override;

private:
    Requirements m_requirements;
    GlobWatch m_row;
};

// "visible if": the row is visible exactly while the controlling parameter's text equals the required text.
class VisibilityConstraint : public GenericParam::iValueChangeHandler {
public:
    VisibilityConstraint(LightweightString<wchar_t> required, Glob* row);

    const LightweightString<wchar_t>& getRequired() const { return m_required; }
    Glob* getRow() const { return m_row.get(); }

    void handleValueChange(const LightweightString<wchar_t>& newValue) override;

private:
    LightweightString<wchar_t> m_required;
    GlobWatch m_row;
};

// A bound by another parameter's current value. It is checked only when the bounded parameter is set: moving
// the other one later does not correct it. A bound against a parameter that is not numeric ("int" or
// "double") lets every value through.
class BoundConstraint : public GenericParam::iValueConstraint {
public:
    const Cv::Ptr<GenericParam::iParam>& getOther() const { return m_other; }
    // Lets go of the other parameter, after which every value passes. Two parameters that bound each other
    // hold each other through their constraints, so the panel's builder releases its bounds when the panel
    // goes.
    void release() { m_other = nullptr; }

protected:
    explicit BoundConstraint(Cv::Ptr<GenericParam::iParam> other);
    // Answers the other parameter's text when `outOfBounds(proposed, other)`, else the proposal.
    template <typename Compare>
    LightweightString<wchar_t> apply(const LightweightString<wchar_t>& proposed, Compare outOfBounds) const;

private:
    Cv::Ptr<GenericParam::iParam> m_other;
};

class MinValueConstraint : public BoundConstraint {
public:
    explicit MinValueConstraint(Cv::Ptr<GenericParam::iParam> other) : BoundConstraint(std::move(other)) {}
    LightweightString<wchar_t> constrain(const LightweightString<wchar_t>& proposed) override;
};

class MaxValueConstraint : public BoundConstraint {
public:
    explicit MaxValueConstraint(Cv::Ptr<GenericParam::iParam> other) : BoundConstraint(std::move(other)) {}
    LightweightString<wchar_t> constrain(const LightweightString<wchar_t>& proposed) override;
};

// Tells a Params that one of its parameters changed, naming it. Params owns its broadcasters and takes them
// off its parameters when it goes, so the plain pointer back is never left dangling.
class ChangeBroadcaster : public GenericParam::iValueChangeHandler {
public:
    ChangeBroadcaster(LightweightString<char> paramName, UIBuilder::Params* target);

    const LightweightString<char>& getParamName() const { return m_paramName; }
    void setTarget(UIBuilder::Params* target) { m_target = target; }

    void handleValueChange(const LightweightString<wchar_t>& newValue) override;

private:
    LightweightString<char> m_paramName;
    UIBuilder::Params* m_target = nullptr;
};

// The condition texts of one description entry, read as they are written.
struct EntryConditions {
    LightweightString<char> name;
    LightweightString<char> activeIf;
    LightweightString<char> visibleIf;
    LightweightString<char> lowerBound; // "must not be lower than"
    LightweightString<char> upperBound; // "must not be higher than"
};

// Ties one entry's conditions to the built parameters, once every row exists. Nothing happens for an entry
// whose name has no row. "active if" conditions are appended to `postConditions`; a "visible if" or a bound
// that names an unknown parameter is dropped, leaving the row visible or the value unbounded. The bounds made
// are appended to `bounds` when it is given, so that they can be released later.
void attachConditions(const EntryConditions& entry, const UIBuilder::ParamList& params,
                      const std::map<LightweightString<char>, Glob*>& widgets,
                      std::vector<Cv::Ptr<UIBuilder::iPostCondition>>& postConditions,
                      std::vector<Cv::Ptr<BoundConstraint>>* bounds = nullptr);
