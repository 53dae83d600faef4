#include "frame/StartupSettings.h"

#include "toolkit/support/StartupConfig.h"

namespace {

// Read on first use: a function-local static is initialised exactly once, whichever translation unit (or
// library) asks first, so no caller can see the values before they are read.
StartupSettings::Values& stored()
{
    static StartupSettings::Values values = StartupSettings::fromConfig(config_int);
    return values;
}

} // namespace

StartupSettings::Values StartupSettings::fromConfig(const Reader& read)
{
    Values values;
    if (!read)
        return values;
    values.colourWheelReflectLuma = read("colour_wheel_reflect_luma", 0);
    values.showExperimental = read("showExperimental", 0) == 1;
    values.celstripGrabSize = read("celstrip_grab_size", 6);
    values.actionParamsOnMenu = read("action_params_on_menu", 0) != 0;
    return values;
}

int StartupSettings::colourWheelReflectLuma()
{
    return stored().colourWheelReflectLuma;
}

bool StartupSettings::showExperimental()
{
    return stored().showExperimental;
}

int StartupSettings::celstripGrabSize()
{
    return stored().celstripGrabSize;
}

bool StartupSettings::actionParamsOnMenu()
{
    return stored().actionParamsOnMenu;
}

StartupSettings::Values StartupSettings::current()
{
    return stored();
}

StartupSettings::Values StartupSettings::overrideForTesting(const Values& values)
{
    Values& target = stored();
    const Values previous = target;
    target = values;
    return previous;
}
