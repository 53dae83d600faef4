#include "toolkit/support/JSON.h"

#include "toolkit/support/TextFile.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace JSON {

struct Element::Member {
    struct TextRef {
        uint32_t offset;
        uint32_t length;
    };
    uint32_t nameOffset = 0;
    uint32_t nameLength = 0;
    union {
        double number;
        Element* child;
        TextRef text;
        bool flag;
    } value{};
};

namespace {

// Length of the valid UTF-8 sequence starting at text[i], or 0 when it is not one (overlong forms, surrogates
// and values beyond U+10FFFF are not valid).
size_t validSequenceLength(std::string_view text, size_t i)
{
    const auto byte = [&](size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char lead = byte(i);
    if (lead < 0x80)
        return 1;
    size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF)
        length = 2;
    else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0)
            low = 0xA0;
        else if (lead == 0xED)
            high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0)
            low = 0x90;
        else if (lead == 0xF4)
            high = 0x8F;
    } else
        return 0;
    if (i + length > text.size())
        return 0;
    if (byte(i + 1) < low || byte(i + 1) > high)
        return 0;
    for (size_t k = 2; k < length; ++k)
        if (byte(i + k) < 0x80 || byte(i + k) > 0xBF)
            return 0;
    return length;
}

bool isValidUTF8(std::string_view text)
{
    for (size_t i = 0; i < text.size();) {
        // Runs of ASCII are the common case.
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            ++i;
            continue;
        }
        const size_t length = validSequenceLength(text, i);
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

// Appends text as a quoted JSON string. Invalid UTF-8 becomes U+FFFD, so the output is always valid.
void appendQuoted(std::string& out, std::string_view text)
{
    static constexpr char hex[] = "0123456789abcdef";
    out += '"';
    for (size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c >= 0x80) {
            const size_t length = validSequenceLength(text, i);
            if (length == 0) {
                out += "\xEF\xBF\xBD";
                ++i;
            } else {
                out.append(text.substr(i, length));
                i += length;
            }
            continue;
        }
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (c < 0x20) {
                out += "\\u00";
                out += hex[c >> 4];
                out += hex[c & 15];
            } else
                out += static_cast<char>(c);
        }
        ++i;
    }
    out += '"';
}

// The power of ten of the first significant digit of a JSON number's text, saturated far beyond the
// range of doubles; only its sign matters to the caller.
long long decimalOrder(std::string_view text)
{
    if (!text.empty() && text.front() == '-')
        text.remove_prefix(1);
    const size_t e = text.find_first_of("eE");
    const std::string_view mantissa = text.substr(0, e);
    long long exponent = 0;
    if (e != std::string_view::npos) {
        std::string_view digits = text.substr(e + 1);
        const bool negative = !digits.empty() && digits.front() == '-';
        if (!digits.empty() && (digits.front() == '-' || digits.front() == '+'))
            digits.remove_prefix(1);
        for (const char c : digits)
            exponent = std::min(exponent * 10 + (c - '0'), 1'000'000'000'000LL);
        if (negative)
            exponent = -exponent;
    }
    const size_t dot = mantissa.find('.');
    const std::string_view integer = mantissa.substr(0, dot);
    const size_t firstInteger = integer.find_first_not_of('0');
    if (firstInteger != std::string_view::npos)
        return static_cast<long long>(integer.size() - firstInteger) - 1 + exponent;
    const std::string_view fraction = dot == std::string_view::npos ? std::string_view() : mantissa.substr(dot + 1);
    const size_t firstFraction = fraction.find_first_not_of('0');
    if (firstFraction == std::string_view::npos)
        return std::numeric_limits<long long>::min(); // zero
    return exponent - static_cast<long long>(firstFraction) - 1;
}

// The double nearest to a number's text (already checked against the JSON grammar). Too small to be told
// from zero reads as zero; too large for a double has no value.
std::optional<double> numberFromText(std::string_view text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size())
        return value;
    if (error == std::errc::result_out_of_range && decimalOrder(text) < 0)
        return text.front() == '-' ? -0.0 : 0.0;
    return std::nullopt;
}

void releaseElement(Element* element)
{
    if (element && element->decRefCount() == 0)
        delete element;
}

} // namespace

// ---- Element

Element::~Element()
{
    static_assert(sizeof(Member) == 16, "members are packed so that large arrays stay small");
    if (!m_members)
        return;
    for (uint32_t i = 0; i < m_numChildren; ++i)
        releaseElement(m_members[i].value.child);
    ::operator delete(static_cast<void*>(m_members));
}

size_t Element::classSize(Class c) const
{
    switch (c) {
    case eChild: return m_numChildren;
    case eString: return m_numStrings;
    case eNumber: return m_numNumbers;
    case eBool: return m_numBools;
    case eNull: return m_numNulls;
    case eNumClasses: break;
    }
    return 0;
}

const Element::Member* Element::classBegin(Class c) const
{
    size_t offset = 0;
    for (int k = eChild; k < c; ++k)
        offset += classSize(static_cast<Class>(k));
    return m_members + offset;
}

const Element::Member* Element::find(Class c, std::string_view key) const
{
    const Member* member = classBegin(c);
    const Member* end = member + classSize(c);
    for (; member != end; ++member)
        if (nameOf(*member) == key)
            return member;
    return nullptr;
}

const Element::Member* Element::at(Class c, size_t index) const
{
    return index < classSize(c) ? classBegin(c) + index : nullptr;
}

std::string_view Element::nameOf(const Member& member) const
{
    return {m_text + member.nameOffset, member.nameLength};
}

std::string_view Element::textOf(const Member& member) const
{
    return {m_text + member.value.text.offset, member.value.text.length};
}

Cv::Ptr<Element> Element::getChild(std::string_view key) const
{
    const Member* member = find(eChild, key);
    return member ? Cv::Ptr<Element>(member->value.child) : nullptr;
}

Cv::Ptr<Element> Element::getChild(size_t index) const
{
    const Member* member = at(eChild, index);
    return member ? Cv::Ptr<Element>(member->value.child) : nullptr;
}

LightweightString<char> Element::getChildName(size_t index) const
{
    const Member* member = at(eChild, index);
    return member ? LightweightString<char>(nameOf(*member)) : LightweightString<char>();
}

LightweightString<char> Element::getStringAttribName(size_t index) const
{
    const Member* member = at(eString, index);
    return member ? LightweightString<char>(nameOf(*member)) : LightweightString<char>();
}

bool Element::hasString(std::string_view key) const
{
    return find(eString, key) != nullptr;
}

LightweightString<char> Element::getString(std::string_view key) const
{
    const Member* member = find(eString, key);
    return member ? LightweightString<char>(textOf(*member)) : LightweightString<char>();
}

LightweightString<wchar_t> Element::getWString(std::string_view key) const
{
    const Member* member = find(eString, key);
    return member ? fromUTF8(textOf(*member)) : LightweightString<wchar_t>();
}

LightweightString<char> Element::getString(size_t index) const
{
    const Member* member = at(eString, index);
    return member ? LightweightString<char>(textOf(*member)) : LightweightString<char>();
}

LightweightString<wchar_t> Element::getWString(size_t index) const
{
    const Member* member = at(eString, index);
    return member ? fromUTF8(textOf(*member)) : LightweightString<wchar_t>();
}

LightweightString<char> Element::getNumericAttribName(size_t index) const
{
    const Member* member = at(eNumber, index);
    return member ? LightweightString<char>(nameOf(*member)) : LightweightString<char>();
}

std::optional<double> Element::getNumber(std::string_view key) const
{
    const Member* member = find(eNumber, key);
    return member ? std::optional<double>(member->value.number) : std::nullopt;
}

std::optional<double> Element::getNumber(size_t index) const
{
    const Member* member = at(eNumber, index);
    return member ? std::optional<double>(member->value.number) : std::nullopt;
}

double Element::getDouble(std::string_view key, double def) const
{
    return getNumber(key).value_or(def);
}

int Element::getInt(std::string_view key, int def) const
{
    const std::optional<double> number = getNumber(key);
    if (!number)
        return def;
    // Parsed numbers are always finite; the clamp keeps the conversion defined.
    const double clamped = std::clamp(std::trunc(*number), static_cast<double>(std::numeric_limits<int>::min()),
        static_cast<double>(std::numeric_limits<int>::max()));
    return static_cast<int>(clamped);
}

LightweightString<char> Element::getBoolAttribName(size_t index) const
{
    const Member* member = at(eBool, index);
    return member ? LightweightString<char>(nameOf(*member)) : LightweightString<char>();
}

bool Element::getBool(std::string_view key, bool def) const
{
    const Member* member = find(eBool, key);
    return member ? member->value.flag : def;
}

std::optional<bool> Element::getBool(size_t index) const
{
    const Member* member = at(eBool, index);
    return member ? std::optional<bool>(member->value.flag) : std::nullopt;
}

LightweightString<char> Element::getNullAttribName(size_t index) const
{
    const Member* member = at(eNull, index);
    return member ? LightweightString<char>(nameOf(*member)) : LightweightString<char>();
}

// ---- Reading: a handler for the streaming reader that builds elements as containers close

class TreeBuilder {
public:
    using Ch = char;
    using SizeType = rapidjson::SizeType;
    using Member = Element::Member;

    TreeBuilder() = default;
    TreeBuilder(const TreeBuilder&) = delete;
    TreeBuilder& operator=(const TreeBuilder&) = delete;
    ~TreeBuilder()
    {
        // After a failure, children that never reached a finished parent are still held by the frames.
        for (size_t d = 0; d < m_depth; ++d)
            for (const Pending& pending : m_frames[d].members)
                if (pending.cls == Element::eChild)
                    releaseElement(pending.member.value.child);
    }

    Cv::Ptr<Element> takeRoot() { return std::move(m_root); }

    bool Null() { return addMember(frameForValue(), Element::eNull, Member{}); }
    bool Bool(bool b)
    {
        Member member;
        member.value.flag = b;
        return addMember(frameForValue(), Element::eBool, member);
    }
    bool Int(int i) { return Double(i); }
    bool Uint(unsigned u) { return Double(u); }
    bool Int64(int64_t i) { return Double(static_cast<double>(i)); }
    bool Uint64(uint64_t u) { return Double(static_cast<double>(u)); }
    bool Double(double d)
    {
        Member member;
        member.value.number = d;
        return addMember(frameForValue(), Element::eNumber, member);
    }
    // Numbers arrive as their text and are converted here, correctly rounded; the reader's own conversion
    // misbehaves on extreme exponents.
    bool RawNumber(const Ch* text, SizeType length, bool)
    {
        const std::optional<double> value = numberFromText(std::string_view(text, length));
        return value && Double(*value);
    }
    bool String(const Ch* text, SizeType length, bool)
    {
        // The reader checks the bytes of the input, but an escaped lone surrogate ("\udc00") would still
        // decode to bytes that are not UTF-8; every string in a tree is valid UTF-8.
        const std::string_view view(text, length);
        if (!isValidUTF8(view))
            return false;
        Frame& frame = frameForValue();
        Member member;
        member.value.text = {static_cast<uint32_t>(frame.text.size()), length};
        frame.text.append(view);
        return addMember(frame, Element::eString, member);
    }
    bool Key(const Ch* text, SizeType length, bool)
    {
        const std::string_view view(text, length);
        if (!isValidUTF8(view))
            return false;
        Frame& frame = m_frames[m_depth - 1];
        frame.keyOffset = static_cast<uint32_t>(frame.text.size());
        frame.keyLength = length;
        frame.text.append(view);
        return true;
    }
    bool StartObject() { return open(Element::Kind::Object); }
    bool EndObject(SizeType) { return close(); }
    bool StartArray() { return open(Element::Kind::Array); }
    bool EndArray(SizeType) { return close(); }

private:
    struct Pending {
        Member member;
        Element::Class cls;
    };
    struct Frame {
        Element::Kind kind = Element::Kind::Object;
        std::vector<Pending> members;
        std::string text;
        uint32_t keyOffset = 0;
        uint32_t keyLength = 0;
    };

    // The frame a value goes into. A lone scalar document uses the first frame, which no container holds
    // at depth 0.
    Frame& frameForValue()
    {
        if (m_depth == 0) {
            if (m_frames.empty())
                m_frames.emplace_back();
            reset(m_frames[0], Element::Kind::Scalar);
            return m_frames[0];
        }
        return m_frames[m_depth - 1];
    }

    static void reset(Frame& frame, Element::Kind kind)
    {
        frame.kind = kind;
        frame.members.clear();
        frame.text.clear();
        frame.keyOffset = frame.keyLength = 0;
    }

    bool addMember(Frame& frame, Element::Class cls, Member member)
    {
        const bool scalarDocument = m_depth == 0;
        if (frame.kind == Element::Kind::Object) {
            member.nameOffset = frame.keyOffset;
            member.nameLength = frame.keyLength;
        }
        frame.members.push_back({member, cls});
        // Counted while pending, so that one huge flat array is refused before it is complete.
        m_treeBytes += sizeof(Pending);
        if (m_treeBytes > kMaxTreeBytes)
            return false;
        if (!scalarDocument)
            return true;
        Element* root = finish(frame);
        if (!root)
            return false;
        m_root = Cv::Ptr<Element>(root);
        return true;
    }

    bool open(Element::Kind kind)
    {
        if (m_depth >= static_cast<size_t>(kMaxDepth))
            return false;
        if (m_frames.size() <= m_depth)
            m_frames.emplace_back();
        reset(m_frames[m_depth], kind);
        ++m_depth;
        return true;
    }

    bool close()
    {
        Element* element = finish(m_frames[m_depth - 1]);
        if (!element)
            return false;
        m_frames[m_depth - 1].members.clear();
        --m_depth;
        if (m_depth == 0) {
            m_root = Cv::Ptr<Element>(element);
            return true;
        }
        element->incRefCount();
        Member member;
        member.value.child = element;
        return addMember(m_frames[m_depth - 1], Element::eChild, member);
    }

    // Makes the element for a frame: members grouped by class, then all the frame's text, in one block.
    Element* finish(const Frame& frame)
    {
        const size_t count = frame.members.size();
        const size_t memberBytes = count * sizeof(Member);
        const size_t bytes = memberBytes + frame.text.size();
        // The members were counted as they came; the element and its text are counted now.
        m_treeBytes += sizeof(Element) + frame.text.size();
        if (m_treeBytes > kMaxTreeBytes)
            return nullptr;

        auto* element = new Element(frame.kind);
        if (count == 0)
            return element;
        uint32_t counts[Element::eNumClasses] = {};
        for (const Pending& pending : frame.members)
            ++counts[pending.cls];
        size_t next[Element::eNumClasses] = {};
        for (int c = 1; c < Element::eNumClasses; ++c)
            next[c] = next[c - 1] + counts[c - 1];

        void* block = ::operator new(bytes);
        auto* members = static_cast<Member*>(block);
        for (const Pending& pending : frame.members)
            new (&members[next[pending.cls]++]) Member(pending.member);
        char* text = static_cast<char*>(block) + memberBytes;
        if (!frame.text.empty())
            std::memcpy(text, frame.text.data(), frame.text.size());

        element->m_members = members;
        element->m_text = text;
        element->m_numChildren = counts[Element::eChild];
        element->m_numStrings = counts[Element::eString];
        element->m_numNumbers = counts[Element::eNumber];
        element->m_numBools = counts[Element::eBool];
        element->m_numNulls = counts[Element::eNull];
        return element;
    }

    std::vector<Frame> m_frames;
    size_t m_depth = 0;
    uint64_t m_treeBytes = 0;
    Cv::Ptr<Element> m_root;
};

Cv::Ptr<Element> parse(std::string_view utf8)
{
    // A NUL byte is never valid JSON text, and the reader would take one for the end of the input.
    // Longer text is refused before the reader sees it: its number scanner keeps digit counts in an int.
    if (utf8.empty() || utf8.size() > kMaxFileBytes || std::memchr(utf8.data(), 0, utf8.size()))
        return nullptr;
    TreeBuilder builder;
    rapidjson::MemoryStream stream(utf8.data(), utf8.size());
    rapidjson::Reader reader;
    // Full precision comes from converting the numbers' text here (see RawNumber).
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag
        | rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag;
    if (reader.Parse<flags>(stream, builder).IsError())
        return nullptr;
    return builder.takeRoot();
}

Cv::Ptr<Element> parse(const LightweightString<wchar_t>& text)
{
    const LightweightString<char> utf8 = toUTF8(text.view());
    return parse(utf8.view());
}

Cv::Ptr<Element> parseFile(const LightweightString<wchar_t>& path)
{
    if (path.empty())
        return nullptr;
    const LightweightString<char> utf8Path = toUTF8(path.view());
    // Non-blocking, so that a named pipe put where a document was expected cannot stall the caller.
    const int fd = ::open(utf8Path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return nullptr;
    struct stat info {};
    std::string bytes;
    bool ok = ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && static_cast<uint64_t>(info.st_size) <= kMaxFileBytes;
    if (ok) {
        bytes.resize(static_cast<size_t>(info.st_size));
        size_t done = 0;
        while (ok && done < bytes.size()) {
            const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                break; // the file shrank while being read: parse what there is
            done += static_cast<size_t>(n);
        }
        bytes.resize(done);
    }
    ::close(fd);
    if (!ok)
        return nullptr;
    std::string_view text(bytes);
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    return parse(text);
}

// ---- Writing

Builder::Builder(Root root)
{
    m_open.push_back(root == Root::Array ? Token::OpenArray : Token::OpenObject);
}

uint32_t Builder::storeKey(Key key)
{
    // Array elements have no name; the key of an object member is kept quoted and escaped.
    if (m_open.back() == Token::OpenArray)
        return 0;
    const size_t before = m_text.size();
    appendQuoted(m_text, key.view());
    return static_cast<uint32_t>(m_text.size() - before);
}

void Builder::open(Key key, Token token)
{
    Entry entry{token, static_cast<uint32_t>(m_text.size()), 0, 0, 0};
    entry.keyLength = storeKey(key);
    m_entries.push_back(entry);
    m_open.push_back(token);
}

void Builder::close(Token token)
{
    // A close that does not match the innermost open container (or would close the document) is ignored.
    if (m_open.size() < 2 || m_open.back() != token)
        return;
    m_open.pop_back();
    m_entries.push_back({Token::Close, 0, 0, 0, 0});
}

void Builder::startChild(Key key)
{
    open(key, Token::OpenObject);
}

void Builder::endChild()
{
    close(Token::OpenObject);
}

void Builder::startArray(Key key)
{
    open(key, Token::OpenArray);
}

void Builder::endArray()
{
    close(Token::OpenArray);
}

void Builder::addValue(Key key, std::string_view jsonText)
{
    Entry entry{Token::Value, static_cast<uint32_t>(m_text.size()), 0, 0, 0};
    entry.keyLength = storeKey(key);
    entry.valueOffset = static_cast<uint32_t>(m_text.size());
    m_text.append(jsonText);
    entry.valueLength = static_cast<uint32_t>(jsonText.size());
    m_entries.push_back(entry);
}

void Builder::addString(Key key, std::string_view utf8)
{
    Entry entry{Token::Value, static_cast<uint32_t>(m_text.size()), 0, 0, 0};
    entry.keyLength = storeKey(key);
    entry.valueOffset = static_cast<uint32_t>(m_text.size());
    appendQuoted(m_text, utf8);
    entry.valueLength = static_cast<uint32_t>(m_text.size() - entry.valueOffset);
    m_entries.push_back(entry);
}

void Builder::add(Key key, const char* text, bool omitIfEmpty)
{
    const std::string_view view = text ? std::string_view(text) : std::string_view();
    if (!(omitIfEmpty && view.empty()))
        addString(key, view);
}

void Builder::add(Key key, const wchar_t* text, bool omitIfEmpty)
{
    const std::wstring_view view = text ? std::wstring_view(text) : std::wstring_view();
    if (!(omitIfEmpty && view.empty()))
        addString(key, toUTF8(view).view());
}

void Builder::add(Key key, const LightweightString<char>& text, bool omitIfEmpty)
{
    if (!(omitIfEmpty && text.empty()))
        addString(key, text.view());
}

void Builder::add(Key key, const LightweightString<wchar_t>& text, bool omitIfEmpty)
{
    if (!(omitIfEmpty && text.empty()))
        addString(key, toUTF8(text.view()).view());
}

void Builder::add(Key key, float value)
{
    if (!std::isfinite(value))
        return addNull(key);
    // to_chars without a format writes the shortest text that reads back as the same float.
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    addValue(key, std::string_view(buffer, static_cast<size_t>(result.ptr - buffer)));
}

void Builder::add(Key key, double value)
{
    if (!std::isfinite(value))
        return addNull(key);
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    addValue(key, std::string_view(buffer, static_cast<size_t>(result.ptr - buffer)));
}

void Builder::addInteger(Key key, long long value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    addValue(key, std::string_view(buffer, static_cast<size_t>(result.ptr - buffer)));
}

void Builder::addUnsigned(Key key, unsigned long long value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    addValue(key, std::string_view(buffer, static_cast<size_t>(result.ptr - buffer)));
}

void Builder::addBool(Key key, bool value)
{
    addValue(key, value ? "true" : "false");
}

void Builder::addNull(Key key)
{
    addValue(key, "null");
}

template <typename Out>
void Builder::render(int indent, unsigned flags, Out&& emit) const
{
    const bool compact = (flags & eCompact) != 0;
    const size_t step = static_cast<size_t>(std::clamp(indent, 0, 64));
    struct Open {
        Token token;
        size_t members;
    };
    std::vector<Open> stack;
    std::string line;

    const auto newLine = [&](size_t level) {
        if (compact)
            return;
        emit(std::string_view(line));
        line.assign(level * step, ' ');
    };
    const auto closer = [](Token token) { return token == Token::OpenArray ? ']' : '}'; };
    const auto closeInnermost = [&] {
        const Open innermost = stack.back();
        stack.pop_back();
        if (innermost.members > 0)
            newLine(stack.size());
        line += closer(innermost.token);
    };

    line += m_open.front() == Token::OpenArray ? '[' : '{';
    stack.push_back({m_open.front(), 0});
    for (size_t i = 0; i < m_entries.size(); ++i) {
        const Entry& entry = m_entries[i];
        if (entry.token == Token::Close) {
            closeInnermost();
            continue;
        }
        if (stack.back().members++ > 0)
            line += ',';
        newLine(stack.size());
        if (entry.keyLength > 0) {
            line.append(m_text, entry.keyOffset, entry.keyLength);
            line += compact ? ":" : ": ";
        }
        if (entry.token == Token::Value) {
            line.append(m_text, entry.valueOffset, entry.valueLength);
            continue;
        }
        line += entry.token == Token::OpenArray ? '[' : '{';
        // An empty container stays on its member's line.
        const bool empty = i + 1 == m_entries.size() || m_entries[i + 1].token == Token::Close;
        if (empty) {
            line += closer(entry.token);
            if (i + 1 < m_entries.size())
                ++i;
        } else
            stack.push_back({entry.token, 0});
    }
    while (!stack.empty())
        closeInnermost();
    emit(std::string_view(line));
}

void Builder::printTo(TextFile& file, int indent, unsigned flags) const
{
    render(indent, flags, [&](std::string_view line) { file.appendLine(line); });
}

std::string Builder::toString(int indent, unsigned flags) const
{
    std::string text;
    text.reserve(m_text.size() + m_entries.size() * 8);
    render(indent, flags, [&](std::string_view line) {
        text.append(line);
        text += '\n';
    });
    return text;
}

} // namespace JSON
