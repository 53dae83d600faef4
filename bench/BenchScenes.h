#pragma once
// Work that more than one benchmark family measures, written once so that their figures stay comparable.

#include "parampanels/UIBuilderParams.h"

#include <benchmark/benchmark.h>

class iTableAdaptor;

// `count` parameter rows cycling through the five kinds a panel usually holds: a check box, an integer, a
// number, a choice and a text.
UIBuilder::ParamList mixedPanelParameters(int count);

// Scrolls a table of `width` x 600 over `rows` by a page and paints it, once per iteration, wrapping to the top
// at the end. Answers how many widgets the last flush painted.
int scrollTableByPages(benchmark::State& state, iTableAdaptor& rows, uint16_t width);
