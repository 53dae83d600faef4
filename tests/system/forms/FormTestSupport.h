#pragma once
// A form of every element kind on the harness, and a client that reads the form the way a real client
// does: by parsing the "FormUp" messages it receives back into typed values.

#include "forms/fo_bool.h"
#include "forms/fo_choic.h"
#include "forms/fo_entry.h"
#include "forms/form.h"
#include "toolkit/testing/UiHarness.h"
#include "toolkit/ui/MenuGlob.h"
#include "toolkit/widgets/Checkbox.h"
#include "toolkit/widgets/DropDownMenuButton.h"
#include "toolkit/widgets/TitleButton.h"
#include "toolkit/widgets/TitleTextBox.h"
#include "toolkit/widgets/TitledMenuButtonPlain.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace formtest {

using Value = std::variant<std::string, int, double, bool>;

class FormClient : public Glob {
public:
    struct Report {
        int index = -1;
        std::string payload;
    };

    FormClient() : Glob(1, 1) {}
    LightweightString<char> idstring() const override { return "FormClient"; }

    bool handleMessageEvent(LightweightString<char> name, Glob*) override
    {
        raw.push_back(name.str());
        const std::string text = name.str();
        const std::string head = std::string(form::clientMsg) + " ";
        if (text.rfind(head, 0) != 0)
            return false;
        const size_t blank = text.find(' ', head.size());
        Report report;
        report.index = std::atoi(text.substr(head.size(), blank - head.size()).c_str());
        report.payload = blank == std::string::npos ? std::string() : text.substr(blank + 1);
        reports.push_back(report);
        return true;
    }

    // The last value reported for an element, typed by the element's kind: a choice's label, a check box's
    // state, an entry's text read as the number its class holds.
    std::optional<Value> valueOf(int index) const
    {
        for (auto it = reports.rbegin(); it != reports.rend(); ++it) {
            if (it->index != index)
                continue;
            switch (source->m_get_element_type(index)) {
            case fo_bool_element:
                if (it->payload == fo_bool::yesPayload || it->payload == fo_bool::noPayload)
                    return Value(it->payload == fo_bool::yesPayload);
                return std::nullopt;
            case fo_entry_element: {
                const fo_eleme* element = source->m_get_element(index);
                if (dynamic_cast<const fo_v_int*>(element))
                    return Value(std::atoi(it->payload.c_str()));
                if (dynamic_cast<const fo_v_dbl*>(element))
                    return Value(std::atof(it->payload.c_str()));
                return Value(it->payload);
            }
            case fo_choice_element:
                return Value(it->payload);
            default:
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    form* source = nullptr;
    std::vector<std::string> raw;
    std::vector<Report> reports;
};

enum Row { NameRow, PathRow, CountRow, GainRow, LoopRow, FormatRow, QualityRow, NumRows };

constexpr uint16_t rowWidth = 380;
constexpr uint16_t rowHeight = 24;

struct FormFixture : testing::Test {
    UiHarness ui;
    FormClient* client = nullptr;
    form* f = nullptr;

    void SetUp() override
    {
        client = new FormClient();
        ui.owner().addChild(client, Glob::BottomLeft(0, 0));
        f = new form(420, 330, client, StandardPanel::RaisedBorder, Palette(), UIString(L"Export"));
        client->source = f;
        ui.owner().addChild(f, Glob::BottomLeft(40, 40));
        fo_eleme* rows[] = {
            new fo_entry(rowWidth, rowHeight, NameRow, L"Name", 0),
            new fo_path(rowWidth, rowHeight, PathRow, L"Folder", 1),
            new fo_v_int(rowWidth, rowHeight, CountRow, L"Copies", 1, 10),
            new fo_v_dbl(rowWidth, rowHeight, GainRow, L"Gain", 1.234, 5.0, 2),
            new fo_bool(rowWidth, rowHeight, LoopRow, L"Loop", false),
            new fo_cycle(rowWidth, rowHeight, FormatRow, L"Format", {L"PAL", L"NTSC", L"HD"}),
            new fo_gench(rowWidth, rowHeight, QualityRow, L"Quality", {L"Fast", L"Good", L"Best"}),
        };
        f->m_add_elements(rows, NumRows);
        ui.step();
    }

    template <typename T> T* row(int i) { return dynamic_cast<T*>(f->m_get_element(i)); }
    TitleTextBox* box(int i) { return row<fo_entry>(i)->getTextBox(); }

    // Clicks into an entry's text box, replaces its text by typing, and presses Return.
    void typeInto(int i, const std::wstring& text, bool pressReturn = true)
    {
        ui.click(box(i));
        box(i)->selectAll();
        ui.typeText(text);
        if (pressReturn)
            ui.pressKey(Event::KeyReturn);
        ui.step();
    }
    void chooseFromMenu(MenuGlob* menu, size_t item)
    {
        ASSERT_NE(menu, nullptr);
        ui.click(menu, menu->getItemBox(item).centre());
        ui.step();
    }
    std::string lastRaw() const { return client->raw.empty() ? std::string() : client->raw.back(); }
};

} // namespace formtest
