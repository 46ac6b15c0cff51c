// SPDX-License-Identifier: MIT
// Builds and reads a property bag as the input says: two bytes choose an operation and a key, the key's text and the
// value follow. Every reader is asked for every key that was written, through the node and through what the library
// puts around it.
#include "private/zvbagreader.h"

#include "base/zvconfig.h"
#include "base/zvjson.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

class Input
{
public:
    Input(const std::uint8_t *data, std::size_t size) : m_at(data), m_end(data + size) { }
    bool isAtEnd() const { return m_at == m_end; }
    unsigned byte() { return isAtEnd() ? 0 : *m_at++; }
    std::uint64_t word()
    {
        std::uint64_t value = 0;
        for (int i = 0; i < 8; ++i)
            value = value << 8 | byte();
        return value;
    }
    std::string text()
    {
        std::string bytes;
        for (unsigned n = byte() % 24; n > 0 && !isAtEnd(); --n)
            bytes += char(byte());
        return bytes;
    }

private:
    const std::uint8_t *m_at;
    const std::uint8_t *m_end;
};

/// A path as the C readers take it: up to its first zero, and no index that would make an array of millions.
std::string keyText(Input &input)
{
    std::string key = input.text().c_str();
    int digits = 0;
    for (char &c : key) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > 3)
            c = 'x';
    }
    return key;
}

void readEverything(const ZvJsonPtr &bag, const char *key)
{
    int number = 5;
    long long wide = 5;
    bool flag = true;
    double real = 5;
    std::uint64_t id = 5;
    ZvUtf8String text("left");
    ZvString wideText(L"left");
    ZvJsonPtr tree;
    ZvRxObjectPtr object;
    // Whoever says no has left the value alone.
    if ((!bag->GetDataI(key, number) && number != 5) || (!bag->GetDataL(key, wide) && wide != 5)
        || (!bag->GetDataB(key, flag) && !flag) || (!bag->GetDataD(key, real) && real != 5)
        || (!bag->GetDataId(key, id) && id != 5) || (!bag->GetDataS(key, text) && !(text == ZvUtf8String("left")))
        || (!bag->GetDataSW(key, wideText) && wideText.compare(ZvString(L"left")) != 0)
        || (!bag->GetDataJ(key, tree) && tree) || (!bag->GetDataO(key, object) && object))
        std::abort();

    zvBagInt(bag, key, 1);
    zvBagLong(bag, key, 1);
    zvBagBool(bag, key, true);
    zvBagDouble(bag, key, 1);
    zvBagString(bag, key, QStringLiteral("fallback"));
    zvBagTexts(bag, key);
    if (zvBagTree(bag, key) && !zvBagHasKey(bag, key))
        std::abort();
    ZvArray<ZvUtf8String> paths;
    zvutEnumPaths(zvBagTree(bag, key), paths);
}

/// Every node is asked for everything.
void walk(const ZvJsonPtr &node, int depth)
{
    if (!node || depth > 40)
        return;
    const int count = node->elementCount();
    if (count < 0 || node->element(count) || node->element(-1))
        std::abort();
    node->asString();
    node->asInteger();
    node->asLong();
    node->asBool();
    node->asDouble();
    node->asReference();
    node->asId();
    for (int i = 0; i < count; ++i) {
        node->keyAt(i);
        walk(node->element(i), depth + 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const ZvJsonPtr bag = ElementValue::createObject(int(input.byte() % 4));
    std::vector<std::string> keys{"", "/", "a", "a/0", "0"};
    for (int step = 0; step < 64 && !input.isAtEnd(); ++step) {
        const unsigned deed = input.byte();
        const std::string key = keyText(input);
        keys.push_back(key);
        switch (deed % 12) {
        case 0:
            bag->SetDataI(key.c_str(), int(input.word()));
            break;
        case 1:
            bag->SetDataB(key.c_str(), input.byte() & 1);
            break;
        case 2:
            bag->SetDataL(key.c_str(), (long long)(input.word()));
            break;
        case 3:
            bag->SetDataD(key.c_str(), double(std::int64_t(input.word())) / 3);
            break;
        case 4:
            bag->SetDataS(key.c_str(), ZvUtf8String(input.text()));
            break;
        case 5:
            bag->SetDataSW(key.c_str(), ZvString(std::string_view(input.text())));
            break;
        case 6:
            bag->SetDataJ(key.c_str(), ZvJsonPtr());
            break;
        case 7:
            bag->SetDataJ(key.c_str(), ElementValue::createObject(int(input.byte() % 4)));
            break;
        case 8:
            bag->SetDataId(key.c_str(), input.word());
            break;
        case 9:
            bag->setInteger(ZvUtf8String(key), int(input.word()), 0);
            break;
        case 10:
            bag->append(ElementValue::createString(ZvUtf8String(input.text())));
            break;
        case 11: {
            ZvJsonPtr tree;
            if (bag->GetDataJ(key.c_str(), tree))
                tree->append(ElementValue::createInteger(int(input.word())));
            break;
        }
        }
    }
    for (const std::string &key : keys)
        readEverything(bag, key.c_str());
    walk(bag, 0);
    return 0;
}
