// SPDX-License-Identifier: MIT
#include "base/zverror.h"
#include "base/zvlog.h"
#include "base/zvregistry.h"
#include "base/zvsmartptr.h"
#include "base/zvstream.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

int s_alive = 0;

class Shape : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(Shape)
public:
    Shape() { ++s_alive; }
    ~Shape() override { --s_alive; }
};
ZVRX_DEFINE_MEMBERS(Shape, ZvRxObject)

class Square : public Shape
{
    ZVRX_DECLARE_MEMBERS(Square)
};
ZVRX_DEFINE_MEMBERS(Square, Shape)

class Protocol : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(Protocol)
};
ZVRX_DEFINE_MEMBERS(Protocol, ZvRxObject)

std::vector<std::string> s_asserts;
void rememberAssert(const char *text, const char *, int)
{
    s_asserts.emplace_back(text);
}

}

TEST(ZvRxClass, isDerivedFromItselfAndItsAncestors)
{
    EXPECT_TRUE(Square::desc()->isDerivedFrom(Square::desc()));
    EXPECT_TRUE(Square::desc()->isDerivedFrom(Shape::desc()));
    EXPECT_TRUE(Square::desc()->isDerivedFrom(ZvRxObject::desc()));
    EXPECT_FALSE(Shape::desc()->isDerivedFrom(Square::desc()));
    EXPECT_FALSE(Shape::desc()->isDerivedFrom(Protocol::desc()));
    EXPECT_FALSE(Shape::desc()->isDerivedFrom(nullptr));
    EXPECT_EQ(Square::desc()->parent(), Shape::desc());
    EXPECT_STREQ(Square::desc()->name(), "Square");
}

TEST(ZvRxObject, queryGivesTheObjectOrNullAndNoReference)
{
    const auto square = ZvSmartPtr<Square>::adopt(new ZvRxObjectImpl<Square>);
    EXPECT_EQ(square->queryX(Shape::desc()), square.get());
    EXPECT_EQ(square->queryX(Protocol::desc()), nullptr);
    EXPECT_EQ(zvrxNumRefs(square), 1);
    EXPECT_EQ(zvrxCast<Shape>(square.get()), square.get());
    EXPECT_EQ(zvrxCast<Protocol>(square.get()), nullptr);
}

TEST(ZvRxObject, queryFallsBackToTheProtocolObjectOfItsClassOrAnAncestor)
{
    Protocol protocol;
    Shape::desc()->addX(Protocol::desc(), &protocol);
    Square square;
    EXPECT_EQ(square.queryX(Protocol::desc()), &protocol);
    Shape::desc()->addX(Protocol::desc(), nullptr);
    EXPECT_EQ(square.queryX(Protocol::desc()), nullptr);
}

TEST(ZvRxObjectImpl, startsAtOneAndDeletesAtZero)
{
    auto *shape = new ZvRxObjectImpl<Shape>;
    EXPECT_EQ(s_alive, 1);
    EXPECT_EQ(zvrxNumRefs(shape), 1);
    zvrxAddRef(shape);
    EXPECT_EQ(zvrxNumRefs(shape), 2);
    zvrxRelease(shape);
    EXPECT_EQ(s_alive, 1);
    zvrxRelease(shape);
    EXPECT_EQ(s_alive, 0);
}

TEST(ZvRxObjectImpl, markerQueriesGiveNull)
{
    auto *shape = new ZvRxObjectImpl<Shape>;
    EXPECT_EQ(shape->subQueryX(zvrxIsAddRef()), nullptr);
    EXPECT_EQ(shape->subQueryX(zvrxIsRelease()), nullptr);
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(shape->subQueryX(zvrxIsNumRefs())), 1);
    zvrxRelease(shape);
}

TEST(ZvRxObjectImpl, assertsBeforeItGoesBelowZero)
{
    s_asserts.clear();
    const ZvAssertHandler before = zvSetAssertHandler(rememberAssert);
    zvrxCheckRefCounter(1);
    EXPECT_TRUE(s_asserts.empty());
    zvrxCheckRefCounter(0);
    zvSetAssertHandler(before);
    ASSERT_EQ(s_asserts.size(), 1u);
    EXPECT_EQ(s_asserts[0], "(m_nRefCounter > 0)");
}

TEST(ZvStaticRxObject, isNeitherCountedNorDeleted)
{
    ZvStaticRxObject<Shape> shape;
    zvrxAddRef(&shape);
    zvrxRelease(&shape);
    zvrxRelease(&shape);
    EXPECT_EQ(zvrxNumRefs(&shape), 0);
    EXPECT_EQ(s_alive, 1);
}

TEST(ZvSmartPtr, countsWithItsOwners)
{
    {
        auto first = ZvSmartPtr<Shape>::adopt(new ZvRxObjectImpl<Shape>);
        EXPECT_EQ(zvrxNumRefs(first), 1);
        const ZvSmartPtr<Shape> second = first;
        EXPECT_EQ(zvrxNumRefs(second), 2);
        const ZvRxObjectPtr wider = second;
        EXPECT_EQ(zvrxNumRefs(wider), 3);
        first = nullptr;
        EXPECT_EQ(zvrxNumRefs(wider), 2);
        EXPECT_TRUE(first.isNull());
    }
    EXPECT_EQ(s_alive, 0);
}

TEST(ZvError, notThatKindOfClassNamesBothClasses)
{
    const ZvError_NotThatKindOfClass error(Shape::desc(), Square::desc());
    EXPECT_EQ(error.actual(), Shape::desc());
    EXPECT_EQ(error.wanted(), Square::desc());
    EXPECT_NE(std::string(error.what()).find("Shape"), std::string::npos);
    EXPECT_NO_THROW(ZvError_NotThatKindOfClass(nullptr, nullptr));
}

TEST(ServiceRegistry, holdsAReferenceUntilTheKeyIsCleared)
{
    {
        const auto service = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Shape>);
        zv_arbitDict_regservice("Dialog/Common", service);
    }
    EXPECT_EQ(s_alive, 1);
    EXPECT_EQ(zvrxNumRefs(grUISvr("Dialog/Common")), 1);
    EXPECT_EQ(zv_arbitDict_getservice("Dialog/Common"), grUISvr("Dialog/Common"));
    zv_arbitDict_clearservice("Dialog/Common");
    EXPECT_EQ(s_alive, 0);
    EXPECT_EQ(grUISvr("Dialog/Common"), nullptr);
    zv_arbitDict_clearservice("Dialog/Common");
}

TEST(ServiceRegistry, takesACharacterAsKey)
{
    const auto service = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Shape>);
    zv_arbitDict_regservice(ZvString(wchar_t(14)), service);
    EXPECT_EQ(zv_arbitDict_getservice(ZvString(wchar_t(14))), service.get());
    EXPECT_EQ(zv_arbitDict_getservice(ZvString(wchar_t(19))), nullptr);
    zv_arbitDict_clearservice(ZvString(wchar_t(14)));
}

TEST(SystemRegistry, isNeverNullAndForgetsWhatIsRemoved)
{
    ASSERT_NE(zvrxSysRegistry(), nullptr);
    EXPECT_EQ(zvrxSysRegistry()->at("ZvEditor of this test"), nullptr);
    const auto object = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Shape>);
    zvrxSysRegistry()->atPut("ZvEditor of this test", object);
    EXPECT_EQ(zvrxSysRegistry()->at("ZvEditor of this test"), object.get());
    zvrxSysRegistry()->remove("ZvEditor of this test");
    EXPECT_EQ(zvrxNumRefs(object), 1);
}

TEST(ZvFlatMemStream, readsFieldsAndStopsAtItsEnd)
{
    unsigned char bytes[] = {0x01, 0x02, 0x03, 0x04, 0x05};
    const ZvStreamBufPtr stream = ZvFlatMemStream::createNew(bytes, sizeof bytes, 0);
    bool ok = false;
    EXPECT_EQ(stream->readUInt32(&ok), 0x04030201u);
    EXPECT_TRUE(ok);
    EXPECT_EQ(stream->readUInt16(&ok), 0u);
    EXPECT_FALSE(ok);
    EXPECT_TRUE(stream->seek(1));
    EXPECT_EQ(stream->readUInt16(), 0x0302u);
    EXPECT_FALSE(stream->seek(6));
    EXPECT_EQ(stream->tell(), 3u);
}

TEST(ZvSystemServices, openExistingFilesForReadingOnly)
{
    ZvSystemServices *services = zvrxSystemServices();
    ASSERT_NE(services, nullptr);
    const ZvStreamBufPtr stream = services->openFile("/proc/self/exe", 0x80000000u, 64, 3);
    ASSERT_FALSE(stream.isNull());
    char start[4] = {};
    EXPECT_EQ(stream->read(start, 4), 4u);
    EXPECT_EQ(std::string(start, 4), "\x7f" "ELF");
    EXPECT_TRUE(services->openFile("/no such folder/file", 0x80000000u, 64, 3).isNull());
    EXPECT_TRUE(services->openFile("/", 0x80000000u, 64, 3).isNull());
    // Nor does it wait for somebody to write to a pipe.
    const std::string pipe = "/tmp/zv_objects_pipe_" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(services->openFile(pipe.c_str(), 0x80000000u, 64, 3).isNull());
    unlink(pipe.c_str());
    EXPECT_TRUE(services->openFile("/proc/self/exe", 0x40000000u, 64, 3).isNull());
    zvrxSetSystemServices(nullptr);
    EXPECT_EQ(zvrxSystemServices(), nullptr);
    zvrxSetSystemServices(services);
}
