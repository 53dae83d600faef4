// Arbitrary bytes as a JSON document. Whatever parses must be a tree that can be walked whole, written back
// with the builder (pretty and compact) and read again into the same members, values and order.
#include "FuzzChecks.h"
#include "toolkit/support/JSON.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

// Writes the members of element into the builder's open container, class by class in stored order.
void rebuild(const JSON::Element& element, JSON::Builder& builder)
{
    for (size_t i = 0; i < element.getNumChildren(); ++i) {
        const auto child = element.getChild(i);
        check(child && child->kind() != JSON::Element::Kind::Scalar, "a child is missing or scalar");
        const LightweightString<char> name = element.getChildName(i);
        if (child->isArray()) {
            builder.startArray(name);
            rebuild(*child, builder);
            builder.endArray();
        } else {
            builder.startChild(name);
            rebuild(*child, builder);
            builder.endChild();
        }
    }
    for (size_t i = 0; i < element.getNumStringAttribs(); ++i)
        builder.add(element.getStringAttribName(i), element.getString(i));
    for (size_t i = 0; i < element.getNumNumericAttribs(); ++i) {
        const auto number = element.getNumber(i);
        check(number.has_value(), "a numeric attribute has no value");
        builder.add(element.getNumericAttribName(i), *number);
    }
    for (size_t i = 0; i < element.getNumBoolAttribs(); ++i)
        builder.add(element.getBoolAttribName(i), *element.getBool(i));
    for (size_t i = 0; i < element.getNumNullAttribs(); ++i)
        builder.addNull(element.getNullAttribName(i));
}

void checkSame(const JSON::Element& a, const JSON::Element& b)
{
    check(a.getNumChildren() == b.getNumChildren(), "child count differs");
    check(a.getNumStringAttribs() == b.getNumStringAttribs(), "string count differs");
    check(a.getNumNumericAttribs() == b.getNumNumericAttribs(), "number count differs");
    check(a.getNumBoolAttribs() == b.getNumBoolAttribs(), "bool count differs");
    check(a.getNumNullAttribs() == b.getNumNullAttribs(), "null count differs");
    for (size_t i = 0; i < a.getNumChildren(); ++i) {
        check(a.getChildName(i) == b.getChildName(i), "child name differs");
        check(a.getChild(i)->kind() == b.getChild(i)->kind(), "child kind differs");
        checkSame(*a.getChild(i), *b.getChild(i));
    }
    for (size_t i = 0; i < a.getNumStringAttribs(); ++i) {
        check(a.getStringAttribName(i) == b.getStringAttribName(i), "string name differs");
        check(a.getString(i) == b.getString(i), "string value differs");
        // Lookup by name answers the first member of that name, in both trees alike.
        check(a.getString(a.getStringAttribName(i).view()) == b.getString(b.getStringAttribName(i).view()),
            "string lookup differs");
    }
    for (size_t i = 0; i < a.getNumNumericAttribs(); ++i) {
        check(a.getNumericAttribName(i) == b.getNumericAttribName(i), "number name differs");
        check(*a.getNumber(i) == *b.getNumber(i), "number value differs");
    }
    for (size_t i = 0; i < a.getNumBoolAttribs(); ++i)
        check(a.getBool(i) == b.getBool(i), "bool value differs");
    for (size_t i = 0; i < a.getNumNullAttribs(); ++i)
        check(a.getNullAttribName(i) == b.getNullAttribName(i), "null name differs");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto root = JSON::parse(bytes);

    // Wide text that came from the same (valid UTF-8) bytes must get the same verdict.
    const LightweightString<wchar_t> wide = fromUTF8(bytes);
    if (toUTF8(wide.view()) == bytes)
        check(static_cast<bool>(JSON::parse(wide)) == static_cast<bool>(root), "wide text verdict differs");
    if (!root)
        return 0;

    // A lone scalar is rewritten as the one element of an array, which reads back with the same members.
    JSON::Builder builder(root->isObject() ? JSON::Builder::Root::Object : JSON::Builder::Root::Array);
    rebuild(*root, builder);
    for (const unsigned flags : {0u, static_cast<unsigned>(JSON::Builder::eCompact)}) {
        const std::string text = builder.toString(2, flags);
        const auto again = JSON::parse(text);
        check(static_cast<bool>(again), "rewritten document does not parse");
        checkSame(*root, *again);
    }
    return 0;
}
