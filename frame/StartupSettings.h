#pragma once
// StartupSettings: the four integers the components consult, read from the start-up configuration once when
// the library loads. Nothing re-reads them, so a change to the configuration takes effect at the next start.
//
//     key                          default  kept as
//     colour_wheel_reflect_luma    0        the integer (the hue and saturation wheel)
//     showExperimental             0        true exactly when the value is 1 (experimental formats offered)
//     celstrip_grab_size           6        the integer, in pixels (grab zone at a track button's edge)
//     action_params_on_menu        0        true when the value is not 0 (action parameters become menu items)
//
// The accessors may be called at any time, even from another library's static initialiser before ours has
// run: the first call reads the settings, and frame/LibraryStartup.cpp makes that happen at load, after the
// commands are registered, so a later change to the configuration does not reach a running process.

#include <functional>
#include <string_view>

class StartupSettings {
public:
    struct Values {
        int colourWheelReflectLuma = 0;
        bool showExperimental = false;
        int celstripGrabSize = 6;
        bool actionParamsOnMenu = false;

        bool operator==(const Values&) const = default;
    };

    // Answers the integer setting named `key`, or `def` when it is not set.
    using Reader = std::function<int(std::string_view key, int def)>;

    // Reads the four keys through `read`, in the order of the table above, and applies the conversions.
    // A null reader gives the defaults.
    static Values fromConfig(const Reader& read);

    static int colourWheelReflectLuma();
    static bool showExperimental();
    static int celstripGrabSize();
    static bool actionParamsOnMenu();
    static Values current();

    // For tests only, on the user-interface thread: replaces the process's values and answers the previous
    // ones, so that a test can put them back.
    static Values overrideForTesting(const Values& values);

    // The scope form: the values apply until the object dies, then the previous ones return.
    class ScopedOverride {
    public:
        explicit ScopedOverride(const Values& values) : m_previous(overrideForTesting(values)) {}
        ~ScopedOverride() { overrideForTesting(m_previous); }
        ScopedOverride(const ScopedOverride&) = delete;
        ScopedOverride& operator=(const ScopedOverride&) = delete;

    private:
        Values m_previous;
    };
};
