// SPDX-License-Identifier: MIT
#include "base/zvjson.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

ZVRX_DEFINE_MEMBERS(IElementValueBase, ZvRxObject)

namespace {

class Node;

/// An id as 64-bit value, told apart from an integer.
struct Id
{
    std::uint64_t value;
};

struct Null
{
};

typedef std::vector<ZvJsonPtr> Elements;
typedef std::vector<std::pair<std::string, ZvJsonPtr>> Members; // in order of insertion: bags are small
typedef std::variant<Null, long long, bool, double, ZvUtf8String, ZvRxObjectPtr, Id, Elements, Members> Value;

bool isIndex(std::string_view part)
{
    return !part.empty() && part.size() < 7 && part.find_first_not_of("0123456789") == std::string_view::npos;
}

std::size_t indexOf(std::string_view part)
{
    std::size_t index = 0;
    for (const char digit : part)
        index = index * 10 + std::size_t(digit - '0');
    return index;
}

class Node : public IElementValueBase
{
public:
    explicit Node(Value value = Null()) : m_value(std::move(value)) { }

    // ---- by key

    bool GetDataI(const char *key, int &value) const override
    {
        long long wide = 0;
        if (!GetDataL(key, wide))
            return false;
        value = int(wide);
        return true;
    }
    bool GetDataB(const char *key, bool &value) const override
    {
        const Node *node = valueAt(key, kFlagBool | kFlagInteger | kFlagDouble);
        if (!node)
            return false;
        value = node->asBool();
        return true;
    }
    bool GetDataL(const char *key, long long &value) const override
    {
        const Node *node = valueAt(key, kFlagBool | kFlagInteger | kFlagDouble);
        if (!node)
            return false;
        value = node->asLong();
        return true;
    }
    bool GetDataD(const char *key, double &value) const override
    {
        const Node *node = valueAt(key, kFlagBool | kFlagInteger | kFlagDouble);
        if (!node)
            return false;
        value = node->asDouble();
        return true;
    }
    bool GetDataS(const char *key, ZvUtf8String &value) const override
    {
        const Node *node = valueAt(key, kFlagString);
        if (!node)
            return false;
        value = node->asString();
        return true;
    }
    bool GetDataSW(const char *key, ZvString &value) const override
    {
        ZvUtf8String text;
        if (!GetDataS(key, text))
            return false;
        value = text.toWide();
        return true;
    }
    bool GetDataJ(const char *key, ZvJsonPtr &value) const override
    {
        const Node *node = atPath(key);
        if (!node || node->isNullNode())
            return false;
        value = const_cast<Node *>(node);
        return true;
    }
    bool GetDataO(const char *key, ZvRxObjectPtr &value) const override
    {
        const Node *node = valueAt(key, kFlagReference);
        if (!node)
            return false;
        value = node->asReference();
        return true;
    }
    bool GetDataId(const char *key, std::uint64_t &value) const override
    {
        const Node *node = valueAt(key, kFlagId | kFlagInteger);
        if (!node)
            return false;
        value = node->asId();
        return true;
    }

    void SetDataI(const char *key, int value) override { put(key, make((long long)(value))); }
    void SetDataB(const char *key, bool value) override { put(key, make(value)); }
    void SetDataL(const char *key, long long value) override { put(key, make(value)); }
    void SetDataD(const char *key, double value) override { put(key, make(value)); }
    void SetDataS(const char *key, const ZvUtf8String &value) override { put(key, make(value)); }
    void SetDataSW(const char *key, const ZvString &value) override { put(key, make(value.toUtf8())); }
    void SetDataJ(const char *key, const ZvJsonPtr &value) override { put(key, value.isNull() ? make(Null()) : value); }
    void SetDataO(const char *key, const ZvRxObjectPtr &value) override
    {
        put(key, value.isNull() ? make(Null()) : make(value));
    }
    void SetDataId(const char *key, std::uint64_t value) override { put(key, make(Id {value})); }
    ZvJsonPtr setInteger(const ZvUtf8String &key, int value, int) override
    {
        const ZvJsonPtr node = make((long long)(value));
        put(key.c_str(), node);
        return node;
    }

    // ---- the node itself

    unsigned typeFlags() const override
    {
        static const unsigned kFlags[] = {kFlagNull, kFlagInteger, kFlagBool, kFlagDouble, kFlagString,
                                          kFlagReference, kFlagId, kFlagArray, kFlagObject};
        return kFlags[m_value.index()];
    }
    bool hasKey(const ZvUtf8String &key) const override { return !member(key).isNull(); }
    ZvJsonPtr member(const ZvUtf8String &key) const override
    {
        return ZvJsonPtr(const_cast<Node *>(memberNode(key.c_str())));
    }
    ZvJsonPtr element(int position, const ZvUtf8String &key) const override
    {
        if (!key.isEmpty())
            return member(key);
        if (position < 0 || position >= elementCount())
            return nullptr;
        if (const auto *elements = std::get_if<Elements>(&m_value))
            return (*elements)[std::size_t(position)];
        return std::get<Members>(m_value)[std::size_t(position)].second;
    }
    ZvUtf8String keyAt(int position) const override
    {
        const auto *members = std::get_if<Members>(&m_value);
        if (!members || position < 0 || position >= int(members->size()))
            return ZvUtf8String();
        return (*members)[std::size_t(position)].first;
    }
    int elementCount() const override
    {
        if (const auto *elements = std::get_if<Elements>(&m_value))
            return int(elements->size());
        if (const auto *members = std::get_if<Members>(&m_value))
            return int(members->size());
        return 0;
    }
    void append(const ZvJsonPtr &element) override
    {
        if (auto *elements = std::get_if<Elements>(&m_value))
            elements->push_back(element.isNull() ? make(Null()) : element);
    }

    ZvUtf8String asString() const override
    {
        const auto *text = std::get_if<ZvUtf8String>(&m_value);
        return text ? *text : ZvUtf8String();
    }
    int asInteger() const override { return int(asLong()); }
    long long asLong() const override
    {
        if (const auto *integer = std::get_if<long long>(&m_value))
            return *integer;
        if (const auto *boolean = std::get_if<bool>(&m_value))
            return *boolean ? 1 : 0;
        if (const auto *real = std::get_if<double>(&m_value))
            return std::isfinite(*real) && std::fabs(*real) < 9e18 ? (long long)(*real) : 0;
        return 0;
    }
    bool asBool() const override
    {
        const auto *real = std::get_if<double>(&m_value);
        return real ? *real != 0.0 : asLong() != 0;
    }
    double asDouble() const override
    {
        const auto *real = std::get_if<double>(&m_value);
        return real ? *real : double(asLong());
    }
    ZvRxObjectPtr asReference() const override
    {
        const auto *object = std::get_if<ZvRxObjectPtr>(&m_value);
        return object ? *object : ZvRxObjectPtr();
    }
    std::uint64_t asId() const override
    {
        const auto *id = std::get_if<Id>(&m_value);
        return id ? id->value : std::uint64_t(asLong());
    }

    static ZvJsonPtr make(Value value) { return ZvJsonPtr::adopt(new ZvRxObjectImpl<Node>(std::move(value))); }

private:
    static std::vector<std::string> partsOf(const char *path)
    {
        std::vector<std::string> parts;
        const char *from = path ? path : "";
        while (const char *slash = std::strchr(from, '/')) {
            parts.emplace_back(from, slash);
            from = slash + 1;
        }
        parts.emplace_back(from);
        return parts;
    }
    /// Null where there is none.
    const Node *memberNode(std::string_view key) const
    {
        if (const auto *members = std::get_if<Members>(&m_value)) {
            for (const auto &member : *members) {
                if (member.first == key)
                    return static_cast<const Node *>(member.second.get());
            }
        }
        return nullptr;
    }
    const Node *child(std::string_view part) const
    {
        const auto *elements = std::get_if<Elements>(&m_value);
        if (!elements)
            return memberNode(part);
        const std::size_t position = isIndex(part) ? indexOf(part) : elements->size();
        return position < elements->size() ? static_cast<const Node *>((*elements)[position].get()) : nullptr;
    }
    /// Read often, several keys for each picture: without a copy of the path, and without counting references.
    const Node *atPath(const char *path) const
    {
        const Node *node = this;
        std::string_view rest = path ? path : "";
        while (node) {
            const std::size_t slash = rest.find('/');
            node = node->child(rest.substr(0, slash));
            if (slash == std::string_view::npos)
                break;
            rest.remove_prefix(slash + 1);
        }
        return node;
    }
    /// The value at \a path if its type is one of \a flags.
    const Node *valueAt(const char *path, unsigned flags) const
    {
        const Node *node = atPath(path);
        return node && (node->typeFlags() & flags) != 0 ? node : nullptr;
    }
    void put(const char *path, const ZvJsonPtr &value)
    {
        std::vector<std::string> parts = partsOf(path);
        ZvJsonPtr holder(this);
        for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
            auto *node = static_cast<Node *>(holder.get());
            ZvJsonPtr next(const_cast<Node *>(node->child(parts[i])));
            const bool wantsArray = isIndex(parts[i + 1]);
            if (next.isNull() || (next->typeFlags() & (kFlagArray | kFlagObject)) == 0) {
                next = wantsArray ? make(Elements()) : make(Members());
                node->setChild(parts[i], next);
            }
            holder = next;
        }
        static_cast<Node *>(holder.get())->setChild(parts.back(), value);
    }
    void setChild(const std::string &part, const ZvJsonPtr &value)
    {
        if (auto *elements = std::get_if<Elements>(&m_value)) {
            if (!isIndex(part))
                return;
            const std::size_t position = indexOf(part);
            while (elements->size() <= position)
                elements->push_back(make(Null()));
            (*elements)[position] = value;
            return;
        }
        if (!std::holds_alternative<Members>(m_value))
            m_value = Members(); // a value that is given members becomes an object
        auto &members = std::get<Members>(m_value);
        const auto it = std::find_if(members.begin(), members.end(), [&](const auto &entry) { return entry.first == part; });
        if (it != members.end())
            it->second = value;
        else
            members.emplace_back(part, value);
    }

    Value m_value;
};

}

ZvJsonPtr ElementValue::createObject(int kind)
{
    return kind == IElementValueBase::kArray ? Node::make(Elements()) : Node::make(Members());
}

ZvJsonPtr ElementValue::createString(const ZvUtf8String &value)
{
    return Node::make(value);
}

ZvJsonPtr ElementValue::createInteger(int value)
{
    return Node::make((long long)(value));
}
