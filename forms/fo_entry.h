#pragma once
// The text entries of a form: fo_entry (free text) and its kinds fo_path, fo_v_int and fo_v_dbl.
//
//   event                                  | entry does
//   ---------------------------------------+--------------------------------------------------------------
//   the user edits the text                | marks itself unread; asks for the focus
//   Return in the text box ("ReturnPressed")| takes the focus if needed, clears unread, collects the entry
//                                          | (validating it) and relays it
//   m_set_entry from code                  | validates and shows it; tells nobody, stays read
//
// Collecting reads the text box and validates: bounded numbers clamp (with atoi / atof) and rewrite the box
// when they had to; a path whose text is rejected puts its last accepted text back.

#include "forms/fo_eleme.h"

#include <string>

class TitleTextBox;

class fo_entry : public fo_eleme {
public:
    // maximumLength 0: no limit.
    fo_entry(uint16_t width, uint16_t height, int index, UIString title, int maximumLength, double proportion = 0.7);
    fo_entry(const fo_entry& other);
    fo_entry(fo_entry&& other) : fo_entry(static_cast<const fo_entry&>(other)) {}
    fo_entry& operator=(const fo_entry& other);
    fo_entry& operator=(fo_entry&& other) { return *this = static_cast<const fo_entry&>(other); }
    ~fo_entry() override;

    TitleTextBox* getTextBox() const { return m_box; }
    int m_get_max_length() const { return m_collected.maxLength; }

    LightweightString<wchar_t> m_get_entry() const override { return m_collected.text; }
    void m_set_entry(const LightweightString<wchar_t>& text) override;
    bool m_is_unread() const override { return m_collected.unread; }
    void m_mark_read() override { m_collected.unread = false; }
    int m_validate_state() override;
    // Reads the text box into the entry, validating (and correcting) it.
    virtual void m_collect_entry();
    // 0 when the text is acceptable as it is.
    virtual int m_validate_entry(const LightweightString<wchar_t>& text);

    static constexpr const char* returnPressedMsg = "ReturnPressed";
    static constexpr const char* editedMsg = "FoEntryEdited";

    fo_eleme* m_clone() const override { return new fo_entry(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;
    bool handleMessageEvent(LightweightString<char> name, Glob* sender) override;
    void drawText() override;
    void reshape() override;
    void m_gain_focus() override;

protected:
    // Shows a text in the box and makes it the entry.
    void showEntry(const LightweightString<wchar_t>& text);
    void setMaxLength(int maximumLength);

private:
    void makeBox();
    // A box of our own showing the text the other's box shows.
    void makeBoxLike(const fo_entry& other);

    // The entry as collected; a copy takes it over and makes its own box showing the other's text.
    struct Entry {
        LightweightString<wchar_t> text;
        int maxLength = 0;
        bool unread = false;
    };

    TitleTextBox* m_box = nullptr; // a child: owned by the tree
    Entry m_collected;
};

class fo_path : public fo_entry {
public:
    // `option` is kept for the client (what kind of path the row asks for); the text box always takes 128.
    fo_path(uint16_t width, uint16_t height, int index, UIString title, int option, double proportion = 0.7);
    fo_path(const fo_path&) = default;
    fo_path(fo_path&&) = default;
    fo_path& operator=(const fo_path&) = default;
    fo_path& operator=(fo_path&&) = default;

    int m_get_option() const { return m_option; }
    LightweightString<wchar_t> m_get_last_accepted() const { return m_lastAccepted; }

    void m_set_entry(const LightweightString<wchar_t>& text) override;
    void m_collect_entry() override;

    static constexpr int pathMaxLength = 128;

    fo_eleme* m_clone() const override { return new fo_path(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;

private:
    void acceptOrRestore(const LightweightString<wchar_t>& text);

    LightweightString<wchar_t> m_lastAccepted;
    int m_option = 0;
};

class fo_v_int : public fo_entry {
public:
    // maximum < minimum makes both 0. The value starts at the minimum.
    fo_v_int(uint16_t width, uint16_t height, int index, UIString title, int minimum, int maximum,
             double proportion = 0.7);
    fo_v_int(const fo_v_int&) = default;
    fo_v_int(fo_v_int&&) = default;
    fo_v_int& operator=(const fo_v_int&) = default;
    fo_v_int& operator=(fo_v_int&&) = default;

    int m_get_value() const { return m_value; }
    int m_get_min() const { return m_min; }
    int m_get_max() const { return m_max; }
    // Clamps and shows.
    void m_set_value(int value);

    void m_set_entry(const LightweightString<wchar_t>& text) override;
    void m_collect_entry() override;
    // value = atoi of the text (of the current entry when the text is empty), clamped; 1 when clamped.
    int m_validate_entry(const LightweightString<wchar_t>& text) override;

    static constexpr int intMaxLength = 8;

    fo_eleme* m_clone() const override { return new fo_v_int(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;

private:
    int m_min = 0;
    int m_max = 0;
    int m_value = 0;
};

class fo_v_dbl : public fo_entry {
public:
    // Negative decimals count as 0. The bounds are printed with the format and read back, so they carry
    // exactly `decimals` decimals; then minimum > maximum makes both 0. The value starts at the minimum.
    fo_v_dbl(uint16_t width, uint16_t height, int index, UIString title, double minimum, double maximum,
             int decimals, double proportion = 0.7);
    fo_v_dbl(const fo_v_dbl&) = default;
    fo_v_dbl(fo_v_dbl&&) = default;
    fo_v_dbl& operator=(const fo_v_dbl&) = default;
    fo_v_dbl& operator=(fo_v_dbl&&) = default;

    double m_get_value() const { return m_value; }
    double m_get_min() const { return m_min; }
    double m_get_max() const { return m_max; }
    int m_get_decimals() const { return m_decimals; }
    const std::string& m_get_format() const { return m_format; }
    // Clamps and shows in the format.
    void m_set_value(double value);
    // Builds the printf format "%.<decimals>f" once.
    void m_init_format();
    // The value printed with the format.
    LightweightString<wchar_t> m_format_value(double value) const;

    void m_set_entry(const LightweightString<wchar_t>& text) override;
    void m_collect_entry() override;
    // value = atof of the text (of the current entry when the text is empty), clamped; 1 when clamped.
    int m_validate_entry(const LightweightString<wchar_t>& text) override;

    // More decimals than a double can hold say nothing, and a huge precision would print megabytes.
    static constexpr int maxDecimals = 20;

    fo_eleme* m_clone() const override { return new fo_v_dbl(*this); }

    // Called by the toolkit
    LightweightString<char> idstring() const override;

private:
    std::string m_format;
    double m_min = 0.0;
    double m_max = 0.0;
    double m_value = 0.0;
    int m_decimals = 0;
};
