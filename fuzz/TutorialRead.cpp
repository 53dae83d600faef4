// Arbitrary bytes as a tutorial document. Whatever parses must read into some tutorial, write out as a
// document that parses again, and be settled by then: reading and writing that document once more must give
// the same bytes (so a tutorial does not drift each time it is opened and saved). A copy writes the same.
#include "FuzzChecks.h"
#include "tutorials/Tutorial.h"

#include "toolkit/support/JSON.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

bool readInto(Tutorial& tutorial, const Cv::Ptr<JSON::Element>& root)
{
    return static_cast<JSON::iPersistable&>(tutorial).read(root);
}

std::string documentOf(const Tutorial& tutorial)
{
    JSON::Builder builder;
    static_cast<const JSON::iPersistable&>(tutorial).write(builder);
    return builder.toString(3, 0);
}

// Everything a host would look at while playing the tutorial back.
void walk(const Tutorial& tutorial)
{
    for (uint16_t i = 0; i < tutorial.getNumPhases(); ++i) {
        const Cv::Ptr<Tutorial::Phase> phase = tutorial.getPhase(i);
        check(static_cast<bool>(phase), "a counted phase is missing");
        check(!phase->pointer.getDisplayString().empty(), "a pointer has no display text");
        check(phase->pointer.target.empty() || phase->pointer.x == Tutorial::kNoCoordinate,
            "a pointer has both a target and a coordinate");
    }
    for (const Tutorial::UIComponent& component : tutorial.components()) {
        check(!component.type.empty(), "a component without a type was kept");
        (void)tutorial.getComponentPosition(component.type, 1.0f);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto root = JSON::parse(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!root)
        return 0;

    Tutorial tutorial;
    check(readInto(tutorial, root), "reading answered false");
    walk(tutorial);
    const std::string first = documentOf(tutorial);

    const auto reparsed = JSON::parse(first);
    check(static_cast<bool>(reparsed), "the written document does not parse");
    Tutorial second;
    check(readInto(second, reparsed), "reading the written document answered false");
    const std::string rewritten = documentOf(second);
    if (rewritten != first)
        std::fprintf(stderr, "first:\n%s\nsecond:\n%s\n", first.c_str(), rewritten.c_str());
    check(rewritten == first, "the document changed on a second round");
    check(documentOf(Tutorial(tutorial)) == first, "a copy writes another document");
    return 0;
}
