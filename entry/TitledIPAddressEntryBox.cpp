#include "entry/TitledIPAddressEntryBox.h"

namespace {

const bool registeredByName = registerTitledType<IPAddressEntryBox>("IPAddressEntryBox");

} // namespace

TitledIPAddressEntryBox::TitledIPAddressEntryBox(UIString title, bool withPort, uint16_t titleWidth,
                                                 const Palette& palette, Canvas* canvas)
    : TitledGlob<IPAddressEntryBox>(
          InitArgs(std::move(title), IPAddressEntryBox::InitArgs(withPort, 0, palette, canvas), titleWidth))
{
}
