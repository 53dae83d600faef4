#pragma once
// LoggerBase: what anything that shows a task's log accepts: lines of text, each of a kind that decides how
// it looks and how it is exported, and progress (through ProgressReportClient).
//
// HyperLink: a line that points at files, addresses, or (internal links) at a panel of this editor to open.
// It travels through the log as text in a string form of its own (see docs/logging.md), which gives back the
// same targets and description, whatever characters they hold.

#include "logging/ProgressReportClient.h"
#include "toolkit/support/LightweightString.h"

#include <cstdint>
#include <vector>

class LoggerBase : public ProgressReportClient {
public:
    // The values are stored with the lines and exported: keep them. Scoped, because the kind HyperLink and
    // the class HyperLink share their name.
    enum class eOutputType : int {
        Normal = 0,
        Unexported = 1,
        Warning = 2,
        Emphasis = 3,
        Error = 4,
        StatusLine = 5,
        HyperLink = 6,
        Heading = 7,
        StatusLineNoWrap = 8,
        Success = 9,
    };

    // One write: text (several lines when it holds newlines), its kind, and a tag kept with each line.
    struct Item {
        LightweightString<wchar_t> text;
        eOutputType kind = eOutputType::Normal;
        uint16_t tag = 0;
    };

    class HyperLink {
    public:
        HyperLink() = default;
        HyperLink(std::vector<LightweightString<wchar_t>> targets, LightweightString<wchar_t> description,
                  bool internal = false);

        // Text that fromString turns back into this link: one line, whatever the targets hold.
        LightweightString<wchar_t> toString() const;
        // Any text gives a link; text that is not in the string form gives one with no targets (a link that
        // does nothing).
        static HyperLink fromString(const LightweightString<wchar_t>& text);

        const std::vector<LightweightString<wchar_t>>& getTargets() const { return m_targets; }
        const LightweightString<wchar_t>& getDescription() const { return m_description; }
        // An internal link's first target is the JSON description of a panel to open.
        bool isInternal() const { return m_internal; }
        bool operator==(const HyperLink&) const = default;

    private:
        std::vector<LightweightString<wchar_t>> m_targets;
        LightweightString<wchar_t> m_description;
        bool m_internal = false;
    };

    virtual void write(const Item& item) = 0;
    void write(const LightweightString<wchar_t>& text, eOutputType kind = eOutputType::Normal, uint16_t tag = 0)
    {
        write(Item { text, kind, tag });
    }
    void write(const HyperLink& link, uint16_t tag = 0) { write(Item { link.toString(), eOutputType::HyperLink, tag }); }
};
