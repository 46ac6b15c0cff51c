// SPDX-License-Identifier: MIT
#ifndef ZVJSON_H
#define ZVJSON_H

#include "base/zvsmartptr.h"
#include "base/zvstring.h"

#include <cstdint>

class IElementValueBase;
/// Counted reference to a node; `->` has no null check.
typedef ZvSmartPtr<IElementValueBase> ZvJsonPtr;

/// One node of a property bag: an object, an array, or a value. Counted; two references see one tree, so what a dialog
/// writes into its parameters the caller finds in his.
///
/// Keys of the Set operations are paths: "btnText/0" makes the array "btnText" where it is missing and sets its first
/// element; a part of digits is an index, anything else a member. The Get operations take the same paths.
/// Numbers and booleans convert to one another, UTF-8 and wide strings too. Bags are plain trees: a node must not be
/// put under itself.
class ZV_EXPORT IElementValueBase : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(IElementValueBase)
public:
    /// Kinds of node that ElementValue::createObject() makes.
    enum Kind { kArray = 1, kObject = 2 };
    /// Bits of typeFlags().
    enum TypeFlag : unsigned {
        kFlagArray = 0x1,
        kFlagObject = 0x2,
        kFlagInteger = 0x4,
        kFlagBool = 0x8,
        kFlagDouble = 0x10,
        kFlagString = 0x20,
        kFlagReference = 0x40,
        kFlagId = 0x80,
        kFlagNull = 0x1000,
    };

    /// Readers by key: true when the value was there, otherwise \a value is left alone. A null-flagged member counts
    /// as missing, and so does one that does not convert.
    virtual bool GetDataI(const char *key, int &value) const = 0;
    /// As GetDataI(): true when the value was there. Numbers are true unless 0.
    virtual bool GetDataB(const char *key, bool &value) const = 0;
    /// As GetDataI(), of 64 bits.
    virtual bool GetDataL(const char *key, long long &value) const = 0;
    /// As GetDataI(). Integers convert.
    virtual bool GetDataD(const char *key, double &value) const = 0;
    /// As GetDataI(), in UTF-8.
    virtual bool GetDataS(const char *key, ZvUtf8String &value) const = 0;
    /// As GetDataI(), wide.
    virtual bool GetDataSW(const char *key, ZvString &value) const = 0;
    /// As GetDataI(): the sub-tree itself, not a copy.
    virtual bool GetDataJ(const char *key, ZvJsonPtr &value) const = 0;
    /// As GetDataI(): the object, with a reference of its own.
    virtual bool GetDataO(const char *key, ZvRxObjectPtr &value) const = 0;
    /// Object ids travel as their 64-bit value, since the bag knows no database.
    virtual bool GetDataId(const char *key, std::uint64_t &value) const = 0;

    /// Writers by key: add or replace. Integers are 32 bits and signed: 0xFFFFFFFF is kept as -1.
    virtual void SetDataI(const char *key, int value) = 0;
    /// Adds or replaces.
    virtual void SetDataB(const char *key, bool value) = 0;
    /// Adds or replaces, of 64 bits.
    virtual void SetDataL(const char *key, long long value) = 0;
    /// Adds or replaces.
    virtual void SetDataD(const char *key, double value) = 0;
    /// Adds or replaces, in UTF-8.
    virtual void SetDataS(const char *key, const ZvUtf8String &value) = 0;
    /// Adds or replaces, wide.
    virtual void SetDataSW(const char *key, const ZvString &value) = 0;
    /// A null reference puts a null-flagged node.
    virtual void SetDataJ(const char *key, const ZvJsonPtr &value) = 0;
    /// The bag holds a reference.
    virtual void SetDataO(const char *key, const ZvRxObjectPtr &value) = 0;
    /// Adds or replaces: an object id as its 64-bit value.
    virtual void SetDataId(const char *key, std::uint64_t value) = 0;
    /// The form that dialog adapters use; \a reserved is 0. Returns the new member.
    virtual ZvJsonPtr setInteger(const ZvUtf8String &key, int value, int reserved) = 0;

    /// Bits of TypeFlag.
    virtual unsigned typeFlags() const = 0;
    /// A node that stands for nothing.
    bool isNullNode() const { return (typeFlags() & kFlagNull) != 0; }
    /// An array; its elements go by position.
    bool isArray() const { return (typeFlags() & kFlagArray) != 0; }
    /// Whether there is a member of that name, null-flagged or not.
    virtual bool hasKey(const ZvUtf8String &key) const = 0;
    /// The member of that name, null when missing.
    virtual ZvJsonPtr member(const ZvUtf8String &key) const = 0;
    /// The element at \a position of an array, or the value at \a position of an object in order of insertion; with a
    /// \a key, the member of that name. Null out of range.
    virtual ZvJsonPtr element(int position, const ZvUtf8String &key = ZvUtf8String()) const = 0;
    /// Key of the member at \a position of an object, empty otherwise.
    virtual ZvUtf8String keyAt(int position) const = 0;
    /// Elements of an array, members of an object, 0 for a value.
    virtual int elementCount() const = 0;
    /// Adds at the end of an array; no effect on another node.
    virtual void append(const ZvJsonPtr &element) = 0;

    /// The node's own value; empty, 0 or false where it does not convert.
    virtual ZvUtf8String asString() const = 0;
    /// The node's own value; 0 where it does not convert.
    virtual int asInteger() const = 0;
    /// The same of 64 bits.
    virtual long long asLong() const = 0;
    /// The node's own value; false where it does not convert.
    virtual bool asBool() const = 0;
    /// The node's own value; 0 where it does not convert.
    virtual double asDouble() const = 0;
    /// The node's own object; null where it holds none.
    virtual ZvRxObjectPtr asReference() const = 0;
    /// The node's own object id; 0 where it holds none.
    virtual std::uint64_t asId() const = 0;
};

/// Makes property bag nodes.
class ZV_EXPORT ElementValue
{
public:
    /// 2 makes an object, 1 an array; any other kind an object. Never null.
    static ZvJsonPtr createObject(int kind);
    /// A value node holding a string, for arrays of strings.
    static ZvJsonPtr createString(const ZvUtf8String &value);
    /// A value node holding a number.
    static ZvJsonPtr createInteger(int value);
};

#endif
