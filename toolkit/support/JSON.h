#pragma once
// JSON documents: reading them into a tree of shared elements, and writing them with a builder.
//
// Reading. A parsed object or array is a JSON::Element. Its members keep the order they had in the text and
// are sorted into classes: children (object or array values), string, numeric, boolean and null attributes.
// Every accessor works within one class, in stored order. Array elements are members with an empty name.
// A member of the wrong JSON type reads as absent ("n": 1 has no string "n"). When a key appears twice, both
// members are kept in order and lookups by name answer the first. See docs/json.md.
//
// A document that is a lone scalar ("abc", 12, true, null) parses into an element of kind Scalar holding that
// one value as an unnamed member, so getString(0), getNumber(0), getBool(0) read it.
//
// Parsing is strict RFC 8259: no comments, no trailing commas, no NaN or Infinity, no bytes after the value,
// and strings must be valid UTF-8. Numbers are read with full double precision. Whatever the input, parsing
// answers a tree or null; it never throws and never recurses on the input's nesting.
//
// Writing. JSON::Builder collects members in the order they are added and prints them in one fixed layout
// (described at Builder::printTo), so that written files can be compared byte for byte.

#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Ptr.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <string>
#include <string_view>
#include <vector>

class TextFile;

namespace JSON {

// Deeper nesting than this many containers makes the document unreadable (parse answers null).
inline constexpr int kMaxDepth = 512;
// Longer text is refused, and parseFile answers null for a larger file without reading it.
inline constexpr uint64_t kMaxFileBytes = 128ull << 20;
// A document whose tree would take more memory than this is refused: a file of nothing but "[]," or "0,"
// costs far more as a tree than as text.
inline constexpr uint64_t kMaxTreeBytes = 512ull << 20;

class Element : public iObject {
public:
    enum class Kind : uint8_t { Object, Array, Scalar };

    ~Element() override;
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

    Kind kind() const { return m_kind; }
    bool isObject() const { return m_kind == Kind::Object; }
    bool isArray() const { return m_kind == Kind::Array; }

    // Children: object and array members.
    size_t getNumChildren() const { return m_numChildren; }
    Cv::Ptr<Element> getChild(std::string_view key) const;
    Cv::Ptr<Element> getChild(size_t index) const;
    LightweightString<char> getChildName(size_t index) const;

    // String attributes. Narrow text is UTF-8; absent reads as empty.
    size_t getNumStringAttribs() const { return m_numStrings; }
    LightweightString<char> getStringAttribName(size_t index) const;
    bool hasString(std::string_view key) const;
    LightweightString<char> getString(std::string_view key) const;
    LightweightString<wchar_t> getWString(std::string_view key) const;
    LightweightString<char> getString(size_t index) const;
    LightweightString<wchar_t> getWString(size_t index) const;

    // Numeric attributes, as doubles (integers beyond 2^53 lose their low digits).
    size_t getNumNumericAttribs() const { return m_numNumbers; }
    LightweightString<char> getNumericAttribName(size_t index) const;
    std::optional<double> getNumber(std::string_view key) const;
    std::optional<double> getNumber(size_t index) const;
    double getDouble(std::string_view key, double def) const;
    // Truncated toward zero and clamped to the range of int.
    int getInt(std::string_view key, int def) const;

    // Boolean attributes.
    size_t getNumBoolAttribs() const { return m_numBools; }
    LightweightString<char> getBoolAttribName(size_t index) const;
    bool getBool(std::string_view key, bool def) const;
    std::optional<bool> getBool(size_t index) const;

    // Null members are kept by name only, so that a document can be walked and rewritten whole.
    size_t getNumNullAttribs() const { return m_numNulls; }
    LightweightString<char> getNullAttribName(size_t index) const;

private:
    friend class TreeBuilder;
    struct Member;
    enum Class : uint8_t { eChild, eString, eNumber, eBool, eNull, eNumClasses };

    explicit Element(Kind kind) : m_kind(kind) {}
    const Member* classBegin(Class c) const;
    size_t classSize(Class c) const;
    const Member* find(Class c, std::string_view key) const;
    const Member* at(Class c, size_t index) const;
    std::string_view nameOf(const Member& member) const;
    std::string_view textOf(const Member& member) const;

    // One block holds the members, grouped by class (children first), followed by the bytes of all names
    // and string values. One allocation per element keeps large documents cheap.
    Member* m_members = nullptr;
    const char* m_text = nullptr;
    uint32_t m_numChildren = 0;
    uint32_t m_numStrings = 0;
    uint32_t m_numNumbers = 0;
    uint32_t m_numBools = 0;
    uint32_t m_numNulls = 0;
    Kind m_kind = Kind::Object;
};

// Null on any failure: not JSON, invalid UTF-8, nesting deeper than kMaxDepth, too large. A number too
// large for a double is refused; one too small to tell from zero reads as zero.
Cv::Ptr<Element> parse(std::string_view utf8);
Cv::Ptr<Element> parse(const LightweightString<wchar_t>& text);
// Reads the file whole. A UTF-8 byte order mark at the start of a file is skipped (files saved by other
// editors carry one); anything else follows parse(). Null for a missing, unreadable or too large file.
Cv::Ptr<Element> parseFile(const LightweightString<wchar_t>& path);

// A key for the builder. A null or empty key names no member: an anonymous object or value.
class Key {
public:
    Key() = default;
    Key(const char* key) : m_key(key ? std::string_view(key) : std::string_view()) {}
    Key(std::string_view key) : m_key(key) {}
    Key(const std::string& key) : m_key(key) {}
    Key(const LightweightString<char>& key) : m_key(key.view()) {}
    std::string_view view() const { return m_key; }

private:
    std::string_view m_key;
};

class Builder {
public:
    enum Flags : unsigned {
        // The whole document on one line, with no spaces: {"a":1,"b":[true]}
        eCompact = 1u,
    };
    enum class Root : uint8_t { Object, Array };

    // The document is one object (or array) that is open from the start: members added before any
    // startChild belong to it.
    explicit Builder(Root root = Root::Object);

    // Opens an object, or an array. Inside an array the key is ignored. In an object, an empty key writes a
    // member named "" (which reads back as an unnamed member, like an array element).
    void startChild(Key key = {});
    void endChild();
    void startArray(Key key = {});
    void endArray();

    // Text is written as a JSON string: escaped where RFC 8259 requires it, and as UTF-8 (invalid narrow
    // bytes become U+FFFD). With omitIfEmpty, an empty text writes no member at all.
    void add(Key key, const char* text, bool omitIfEmpty = false);
    void add(Key key, const wchar_t* text, bool omitIfEmpty = false);
    void add(Key key, const LightweightString<char>& text, bool omitIfEmpty = false);
    void add(Key key, const LightweightString<wchar_t>& text, bool omitIfEmpty = false);
    // Numbers in their shortest text that reads back as the same value: 0.1f as 0.1, 2.0f as 2.
    // NaN and infinities have no JSON form and are written as null.
    void add(Key key, float value);
    void add(Key key, double value);
    template <std::integral T>
        requires(!std::same_as<T, bool> && !std::same_as<T, char> && !std::same_as<T, wchar_t>)
    void add(Key key, T value)
    {
        if constexpr (std::is_signed_v<T>)
            addInteger(key, static_cast<long long>(value));
        else
            addUnsigned(key, static_cast<unsigned long long>(value));
    }
    // Only a real bool: a pointer or a number must not turn silently into true.
    template <std::same_as<bool> B>
    void add(Key key, B value)
    {
        addBool(key, value);
    }
    void addNull(Key key);

    // Current nesting below the document itself.
    int depth() const { return static_cast<int>(m_open.size()) - 1; }

    // The layout, with indent N (spaces per level) and no flags:
    //   {                       the document's opening bracket alone on the first line
    //      "name": "value",     one member per line, indented N spaces per level, ", " never used:
    //      "list": [            a comma ends every member line but the last of its container
    //         1,
    //         {
    //            "a": true
    //         }
    //      ],                   a closing bracket on its own line, at its opener's indentation
    //      "none": [],          an empty container is written "[]" or "{}" on its member's line
    //      "obj": {}
    //   }
    // The colon is followed by one space. An empty document is the one line "{}". Containers still open
    // are closed. printTo appends each line to the file; toString ends every line with "\n".
    void printTo(TextFile& file, int indent, unsigned flags) const;
    std::string toString(int indent = 3, unsigned flags = 0) const;

private:
    enum class Token : uint8_t { OpenObject, OpenArray, Close, Value };
    struct Entry {
        Token token;
        uint32_t keyOffset;
        uint32_t keyLength;
        uint32_t valueOffset;
        uint32_t valueLength;
    };

    void addInteger(Key key, long long value);
    void addUnsigned(Key key, unsigned long long value);
    void addBool(Key key, bool value);
    void addValue(Key key, std::string_view jsonText);
    void addString(Key key, std::string_view utf8);
    void open(Key key, Token token);
    void close(Token token);
    uint32_t storeKey(Key key);
    template <typename Out>
    void render(int indent, unsigned flags, Out&& line) const;

    std::vector<Entry> m_entries;
    std::string m_text; // keys (escaped, quoted) and values (as JSON text)
    std::vector<Token> m_open;
};

// A model object that saves itself as JSON and reads itself back from a parsed element.
class iPersistable : public virtual iObject {
public:
    virtual void write(Builder& builder) const = 0;
    // Answers whether the element could be read.
    virtual bool read(const Cv::Ptr<Element>& element) = 0;
};

} // namespace JSON
