// SPDX-License-Identifier: MIT
#include "corefixture.h"

namespace {

class DocumentLog : public ZvStaticRxObject<ZvApDocManagerReactor>
{
public:
    void documentCreated(ZvApDocument *document) override
    {
        lines.push_back(std::string("created ") + (curDatabase() == document->database() ? "current" : "other"));
        countInside = zvDocManagerPtr()->documentCount();
    }
    void documentToBeDestroyed(ZvApDocument *document) override
    {
        lines.push_back(std::string("dying ") + (curDatabase() == document->database() ? "current" : "other"));
    }
    void documentDestroyed(const ZvString &name) override { lines.push_back("destroyed " + name.toStdString()); }
    void documentBecameCurrent(ZvApDocument *) override { lines.emplace_back("current"); }
    void documentToBeActivated(ZvApDocument *) override { lines.emplace_back("activating"); }
    std::vector<std::string> lines;
    int countInside = -1;
};

typedef std::vector<std::string> Texts;

}

TEST_F(CoreTest, aNewDocumentIsCurrentWhenItIsToldOf)
{
    DocumentLog documents;
    zvDocManagerPtr()->addReactor(&documents);
    zvDocManagerPtr()->addReactor(&documents);
    ZvApDocument *second = zvDocManagerPtr()->newDocument();
    EXPECT_EQ(documents.lines, (Texts {"activating", "created current", "current"}));
    EXPECT_EQ(documents.countInside, 2);
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), second);
    EXPECT_EQ(curDatabase(), second->database());
    zvDocManagerPtr()->removeReactor(&documents);
}

TEST_F(CoreTest, closingTheCurrentDocumentMakesTheNextOneCurrent)
{
    ZvApDocument *second = zvDocManagerPtr()->newDocument();
    DocumentLog documents;
    zvDocManagerPtr()->addReactor(&documents);
    zvDocManagerPtr()->closeDocument(second);
    EXPECT_EQ(documents.lines, (Texts {"dying current", "destroyed ", "current"}));
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), document);
    zvDocManagerPtr()->closeDocument(document);
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), nullptr);
    EXPECT_EQ(curDatabase(), nullptr);
    zvDocManagerPtr()->removeReactor(&documents);
}

TEST_F(CoreTest, whatIsQueuedBehindACommandThatMakesADocumentStays)
{
    zvedMenuMacro("_.NEW", false);
    zvedMenuMacro("_.LINE 0,0 10,0;;", false);
    EXPECT_TRUE(zvedRunQueue());
    EXPECT_NE(zvDocManagerPtr()->currentDocument(), document);
    EXPECT_EQ(curDatabase()->entityCount(), 1);
}

TEST_F(CoreTest, closingAnotherDocumentLeavesTheCurrentOne)
{
    ZvApDocument *second = zvDocManagerPtr()->newDocument();
    DocumentLog documents;
    zvDocManagerPtr()->addReactor(&documents);
    zvDocManagerPtr()->closeDocument(document);
    EXPECT_EQ(documents.lines, (Texts {"dying other", "destroyed "}));
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), second);
    zvDocManagerPtr()->removeReactor(&documents);
}

TEST_F(CoreTest, aDocumentMayHaveNoDatabase)
{
    ZvApDocument *empty = zvDocManagerPtr()->addDocument(nullptr, ZvString());
    EXPECT_EQ(empty->database(), nullptr);
    EXPECT_EQ(curDatabase(), nullptr);
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), empty);
    EXPECT_FALSE(empty->isModified());
    EXPECT_EQ(run("_.LINE 0,0 1,1 ;"), "No drawing is open: LINE");
}

TEST_F(CoreTest, everyPartOfTheSystemMayBeAbsent)
{
    ASSERT_NE(CHcSystem::instance(), nullptr);
    EXPECT_EQ(CHcSystem::instance()->docManager(), zvDocManagerPtr());
    CHcSystem::setInstanceAvailable(false);
    EXPECT_EQ(CHcSystem::instance(), nullptr);
    EXPECT_NE(zvDocManagerPtr(), nullptr);
    CHcSystem::setInstanceAvailable(true);
    CHcSystem::instance()->setDocManagerAvailable(false);
    EXPECT_EQ(CHcSystem::instance()->docManager(), nullptr);
    EXPECT_NE(zvDocManagerPtr(), nullptr);
    CHcSystem::instance()->setDocManagerAvailable(true);
    ZvApApplication *application = CHcSystem::instance()->application();
    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->windowHandle(), nullptr);
    EXPECT_NE(application->layoutManager(), nullptr);
    application->setLayoutManagerAvailable(false);
    EXPECT_EQ(application->layoutManager(), nullptr);
    application->setLayoutManagerAvailable(true);
    CHcSystem::instance()->setApplicationAvailable(false);
    EXPECT_EQ(CHcSystem::instance()->application(), nullptr);
    CHcSystem::instance()->setApplicationAvailable(true);
    document->setEditingContextAvailable(false);
    EXPECT_EQ(document->editingContext(), nullptr);
    EXPECT_NE(zvDocManagerPtr()->defaultEditingContext(), nullptr);
    EXPECT_EQ(zvDocManagerPtr()->defaultEditingContext()->selectionHolder(), nullptr);
    document->setEditingContextAvailable(true);
}

TEST_F(CoreTest, aFileThatCannotBeReadOpensNothing)
{
    ZvDbFileReport report;
    EXPECT_EQ(zvDocManagerPtr()->openDocument("/no such folder/plan.dxf", report), nullptr);
    EXPECT_NE(report.status, Zv::eOk);
    EXPECT_FALSE(report.message.isEmpty());
    EXPECT_EQ(zvDocManagerPtr()->documentCount(), 1);
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), document);
}

TEST_F(CoreTest, savingNamesTheDocumentAndClearsItsMark)
{
    run("_.LINE 0,0 10,10 ;");
    EXPECT_TRUE(document->isModified());
    const ZvString path = ZvString((std::string(testing::TempDir()) + "core test 图.dxf").c_str());
    ZvDbFileReport report;
    ASSERT_EQ(zvDocManagerPtr()->saveDocument(document, path, report), Zv::eOk) << report.message.toStdString();
    EXPECT_FALSE(document->isModified());
    EXPECT_EQ(document->title(), ZvString("core test 图.dxf"));
    // Opening what is open already makes it current again.
    ZvApDocument *second = zvDocManagerPtr()->newDocument();
    ASSERT_NE(second, document);
    EXPECT_EQ(zvDocManagerPtr()->openDocument(path, report), document);
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), document);
    std::remove(path.toUtf8().c_str());
}
