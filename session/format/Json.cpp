#include "session/format/Json.h"

#include "session/format/FormatError.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace Session {
namespace {

/// What the parser reports of a text, with the answer "go on" to all of it.
class Events
{
public:
    bool null() { return true; }
    bool boolean(bool /*value*/) { return true; }
    bool number_integer(std::int64_t /*value*/) { return true; }
    bool number_unsigned(std::uint64_t /*value*/) { return true; }
    bool number_float(double /*value*/, const std::string& /*text*/) { return true; }
    bool string(std::string& /*value*/) { return true; }
    bool binary(Json::binary_t& /*value*/) { return true; }
    bool start_object(std::size_t /*size*/) { return true; }
    bool key(std::string& /*value*/) { return true; }
    bool end_object() { return true; }
    bool start_array(std::size_t /*size*/) { return true; }
    bool end_array() { return true; }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/, const Json::exception& /*error*/)
    {
        return false;
    }
};

/// Builds the value. The library's own builder lets the last of doubled keys win.
class Builder : public Events
{
public:
    /// \param read How many bytes were read, which the parser keeps up to date.
    Builder(Json& root, const std::size_t& read) : mRoot(root), mRead(read) {}

    bool null() { return Add(nullptr); }
    bool boolean(bool value) { return Add(value); }
    bool number_integer(std::int64_t value) { return Add(value); }
    bool number_unsigned(std::uint64_t value) { return Add(value); }
    bool number_float(double /*value*/, const std::string& text)
    {
        return Fail(text.find_first_of(".eE") == std::string::npos
                        ? "the integer is out of range"
                        : "a number is written with a point or an exponent",
                    mRead - 1);  // what ends a number was read, too
    }
    bool string(std::string& value) { return Add(std::move(value)); }

    bool start_object(std::size_t /*size*/) { return Open(Json::object()); }
    bool key(std::string& value)
    {
        auto [member, isNew] = mOpen.back()->get_ref<Json::object_t&>().emplace(value, nullptr);
        mMember = &member->second;
        return isNew || Fail("the key \"" + value + "\" is doubled", mRead);
    }
    bool end_object() { return Close(); }
    bool start_array(std::size_t /*size*/) { return Open(Json::array()); }
    bool end_array() { return Close(); }

    bool parse_error(std::size_t position, const std::string& /*token*/, const Json::exception& error)
    {
        return Fail(Reason(error.what()), position);
    }

    const std::string& Problem() const { return mProblem; }

    /// \return The byte of the problem, from 1.
    std::size_t Position() const { return mPosition; }

private:
    template <class Value>
    Json* Place(Value&& value)
    {
        if (mOpen.empty())
            return &(mRoot = std::forward<Value>(value));
        if (mOpen.back()->is_object())
            return &(*mMember = std::forward<Value>(value));
        return &mOpen.back()->get_ref<Json::array_t&>().emplace_back(std::forward<Value>(value));
    }

    template <class Value>
    bool Add(Value&& value)
    {
        Place(std::forward<Value>(value));
        return true;
    }

    bool Open(Json value)
    {
        if (mOpen.size() == kDeepestJson)
            return Fail("arrays and objects are nested too deeply", mRead);
        mOpen.push_back(Place(std::move(value)));
        return true;
    }

    bool Close()
    {
        mOpen.pop_back();
        return true;
    }

    bool Fail(std::string problem, std::size_t position)
    {
        mProblem = std::move(problem);
        mPosition = position;
        return false;
    }

    /// \return What the library's text says was wrong, without repeating what it read.
    static std::string Reason(const std::string& text)
    {
        const auto from = text.rfind(" - ", text.find("; last read"));
        if (from == std::string::npos)
            return "not JSON: a number beyond every range";
        return "not JSON: " + text.substr(from + 3, text.find("; last read") - from - 3);
    }

    Json& mRoot;
    const std::size_t& mRead;
    std::vector<Json*> mOpen;
    Json* mMember = nullptr;
    std::string mProblem;
    std::size_t mPosition = 0;
};

/// Reads a text and counts how far.
struct CountingIterator
{
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    reference operator*() const { return *at; }
    CountingIterator& operator++()
    {
        ++at;
        ++*count;
        return *this;
    }
    bool operator==(const CountingIterator& other) const { return at == other.at; }
    bool operator!=(const CountingIterator& other) const { return at != other.at; }

    const char* at;
    std::size_t* count;
};

/// \return The place of a byte, counted from 1.
std::string PlaceOf(const std::string& text, std::size_t position)
{
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(position, text.size()));
    const auto lineBegin = std::find(std::make_reverse_iterator(end), text.rend(), '\n').base();
    std::string column = "column " + std::to_string(std::max<std::ptrdiff_t>(end - lineBegin, 1));
    if (lineBegin == text.begin())
        return column;
    return "line " + std::to_string(1 + std::count(text.begin(), lineBegin, '\n')) + ", " + column;
}

/// Writes a value as text.
template <class AnyJson>
class Dumper
{
public:
    explicit Dumper(std::size_t indent) : mIndent(indent) {}

    std::string Dump(const AnyJson& root)
    {
        const AnyJson* value = &root;
        while (true) {
            if (value->is_structured() && !value->empty()) {
                mText += value->is_object() ? '{' : '[';
                mOpen.push_back({value->begin(), value->end(), value->is_object()});
            } else {
                mText += value->dump();
                CloseFinished();
                if (mOpen.empty())
                    return std::move(mText);
                mText += ',';
            }
            BeginLine();
            const Level& innermost = mOpen.back();
            if (innermost.isObject)
                mText += AnyJson(innermost.at.key()).dump() + (mIndent == 0 ? ":" : ": ");
            value = &*innermost.at;
        }
    }

private:
    struct Level
    {
        typename AnyJson::const_iterator at;
        typename AnyJson::const_iterator end;
        bool isObject;
    };

    void CloseFinished()
    {
        while (!mOpen.empty() && ++mOpen.back().at == mOpen.back().end) {
            const char bracket = mOpen.back().isObject ? '}' : ']';
            mOpen.pop_back();
            BeginLine();
            mText += bracket;
        }
    }

    void BeginLine()
    {
        if (mIndent != 0)
            mText.append(1, '\n').append(std::min(mOpen.size(), kDeepestIndent) * mIndent, ' ');
    }

    std::size_t mIndent;
    std::string mText;
    std::vector<Level> mOpen;
};

/// To the library a NUL is the end of the text, and a byte order mark nothing.
/// \throws FormatError
void RefuseNulAndMark(const std::string& text)
{
    if (const auto nul = text.find('\0'); nul != std::string::npos)
        throw FormatError(PlaceOf(text, nul + 1) + ": not JSON: a NUL byte");
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        throw FormatError("column 1: not JSON: a byte order mark");
}

}  // namespace

std::string DumpJson(const Json& value, std::size_t indent)
{
    return Dumper<Json>(indent).Dump(value);
}

std::string DumpJson(const OrderedJson& value, std::size_t indent)
{
    return Dumper<OrderedJson>(indent).Dump(value);
}

Json ParseJson(const std::string& text)
{
    RefuseNulAndMark(text);
    Json value;
    std::size_t read = 0;
    Builder builder(value, read);
    const char* const end = text.data() + text.size();
    if (Json::sax_parse(CountingIterator{text.data(), &read}, CountingIterator{end, &read}, &builder))
        return value;
    throw FormatError(PlaceOf(text, builder.Position()) + ": " + builder.Problem());
}

bool HasKey(const std::string& text, bool (*accepts)(const std::string& key))
{
    RefuseNulAndMark(text);
    struct KeyFinder : Events
    {
        bool start_object(std::size_t /*size*/) { return ++depth > 0; }
        bool start_array(std::size_t /*size*/) { return ++depth > 0; }
        bool end_object() { return depth-- > 0; }
        bool end_array() { return depth-- > 0; }
        bool key(std::string& value)
        {
            found = found || (depth == 1 && accepts(value));
            return true;
        }
        bool parse_error(std::size_t /*position*/, const std::string& /*token*/, const Json::exception& error)
        {
            constexpr int kBeyondEveryRange = 406;  // a number: well-formed, but nobody reads it here
            isJson = error.id == kBeyondEveryRange;
            return false;
        }

        bool (*accepts)(const std::string&) = nullptr;
        std::size_t depth = 0;
        bool found = false;
        bool isJson = true;
    };
    KeyFinder finder;
    finder.accepts = accepts;
    return (Json::sax_parse(text, &finder) || finder.isJson) && finder.found;
}

}  // namespace Session
