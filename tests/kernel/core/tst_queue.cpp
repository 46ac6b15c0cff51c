// SPDX-License-Identifier: MIT
#include "corefixture.h"

#include <stdexcept>

namespace {

std::vector<std::string> s_seen;
int s_active = -1;

int commandActive()
{
    ZvResBuf value;
    return zvedGetVar("CMDACTIVE", &value) == ZvRes::kNormal ? value.resval.rint : -1;
}

void askWords()
{
    s_active = commandActive();
    ZvEdPrompt prompt;
    prompt.text = L"Word:";
    prompt.kind = ZvEdPrompt::kString;
    prompt.allowNone = true;
    ZvString word;
    for (int i = 0; i < 2; ++i) {
        switch (zvedGetString(prompt, word)) {
        case ZvEdInput::kNormal:
            s_seen.push_back(word.toStdString());
            break;
        case ZvEdInput::kNone:
            s_seen.emplace_back("<enter>");
            break;
        default:
            s_seen.emplace_back("<cancel>");
            return;
        }
    }
}

void askLine()
{
    ZvEdPrompt prompt;
    prompt.text = L"Line:";
    prompt.kind = ZvEdPrompt::kStringWithBlanks;
    ZvString line;
    if (zvedGetString(prompt, line) == ZvEdInput::kNormal)
        s_seen.push_back(line.toStdString());
}

void failAfterAChange()
{
    ZvDbDatabase *database = curDatabase();
    ZvDbObjectId id;
    database->appendEntity(new ZvDbLine({0, 0, 0}, {1, 1, 0}), database->modelSpaceId(), id);
    zvedFailCommand(L"It went wrong.");
}

void throwAnError()
{
    throw ZvError("thrown");
}

void throwAStandardError()
{
    throw std::length_error("too long");
}

/// Throws at every change of the drawing.
class Refuser : public ZvStaticRxObject<ZvDbDatabaseReactor>
{
public:
    explicit Refuser(ZvDbDatabase &database) : m_database(database) { m_database.addReactor(this); }
    ~Refuser() override { m_database.removeReactor(this); }
    void objectAppended(const ZvDbDatabase *, const ZvDbObject *) override { throw ZvError("refused"); }
    void objectErased(const ZvDbDatabase *, const ZvDbObject *, bool) override { throw ZvError("refused again"); }

private:
    ZvDbDatabase &m_database;
};

void noteActive()
{
    s_active = commandActive();
}

class QueueTest : public CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        s_seen.clear();
        s_active = -1;
        add("WORDS", 0, askWords);
        add("LINETEXT", 0, askLine);
        add("FAILS", 0, failAfterAChange);
        add("THROWS", 0, throwAnError);
        add("THROWSOTHER", 0, throwAStandardError);
        add("INSIDE", ZvEdCommand::kTransparent, noteActive);
        add("HIDDEN", ZvEdCommand::kNoEcho, noteActive);
    }
    static void add(const char *name, int flags, ZvEdCommandFunction function)
    {
        zvedCommandStack()->addCommand("TEST", name, name, flags, function, nullptr, -1, ZvRxResourceInstance(nullptr), 0);
    }
};

typedef std::vector<std::string> Texts;

}

TEST_F(QueueTest, aBlankMeansEnter)
{
    EXPECT_EQ(run("_.WORDS one two"), "");
    EXPECT_EQ(s_seen, (Texts {"one", "two"}));
}

TEST_F(QueueTest, semicolonAndLineEndMeanEnter)
{
    run("_.WORDS;one\ntwo");
    EXPECT_EQ(s_seen, (Texts {"one", "two"}));
}

TEST_F(QueueTest, twoTerminatorsAreAnEmptyAnswer)
{
    run("_.WORDS;;two");
    EXPECT_EQ(s_seen, (Texts {"<enter>", "two"}));
}

TEST_F(QueueTest, theMacrosOwnEndMeansEnter)
{
    run("_.WORDS one two");
    run("_.LINETEXT a b");
    EXPECT_EQ(s_seen, (Texts {"one", "two", "a b"}));
}

TEST_F(QueueTest, theEndBehindATerminatorIsNoSecondEnter)
{
    run("_.LINETEXT name;");
    EXPECT_EQ(s_seen, (Texts {"name"}));
    EXPECT_EQ(log.lines, (Texts {"start LINETEXT", "end LINETEXT"})); // and does not repeat the command
}

TEST_F(QueueTest, blanksBelongToATextThatTakesThem)
{
    run("_.LINETEXT   first floor  plan ;");
    EXPECT_EQ(s_seen, (Texts {"  first floor  plan "}));
}

TEST_F(QueueTest, caretCCancelsWhatRuns)
{
    TestHost host;
    zvedSetHost(&host);
    run("_.WORDS one^C^C_.LINETEXT x");
    EXPECT_EQ(s_seen, (Texts {"one", "<cancel>", "x"}));
    EXPECT_TRUE(log.has("cancel WORDS"));
    EXPECT_TRUE(log.has("end LINETEXT"));
}

TEST_F(QueueTest, caretCIsPartOfATextWithBlanks)
{
    EXPECT_EQ(run("_.LINETEXT ^C^C plan^C;"), "");
    EXPECT_EQ(s_seen, (Texts {"^C^C plan^C"}));
}

TEST_F(QueueTest, caretCAtTheBeginningOfAMacroCancelsATextWithBlanks)
{
    TestHost host;
    zvedSetHost(&host);
    zvedMenuMacro(L"_.LINETEXT", false);
    zvedMenuMacro(L"^C^C_.LINETEXT x", false);
    zvedRunQueue();
    EXPECT_EQ(s_seen.back(), "x");
}

TEST_F(QueueTest, caretCWithNothingRunningIsNothing)
{
    EXPECT_EQ(run("^C^C_.LINETEXT x"), "");
    EXPECT_EQ(s_seen, (Texts {"x"}));
}

TEST_F(QueueTest, aCommandThatWantsMoreIsCancelledWithoutAHost)
{
    run("_.WORDS one");
    EXPECT_EQ(s_seen, (Texts {"one", "<cancel>"}));
    EXPECT_EQ(log.lines.back(), "cancel WORDS");
}

TEST_F(QueueTest, aCommandThatWantsMoreAsksTheHost)
{
    TestHost host;
    host.answers = {"from the host"};
    zvedSetHost(&host);
    run("_.WORDS one");
    // A line of the host's is input like any other: its blanks end words.
    EXPECT_EQ(s_seen, (Texts {"one", "from"}));
    EXPECT_EQ(host.prompts, (Texts {"Word:"}));
}

TEST_F(QueueTest, anEmptyLineIsEnter)
{
    zvedCommandLine("WORDS");
    zvedCommandLine("");
    zvedCommandLine("two");
    EXPECT_TRUE(zvedRunQueue());
    EXPECT_EQ(s_seen, (Texts {"<enter>", "two"}));
}

TEST_F(QueueTest, semicolonsStandForThemselvesOnALine)
{
    zvedCommandLine("LINETEXT a;b^C");
    zvedRunQueue();
    EXPECT_EQ(s_seen, (Texts {"a;b^C"}));
}

TEST_F(QueueTest, enterRepeatsTheLastCommand)
{
    zvedCommandLine("LINETEXT once");
    zvedCommandLine("");
    zvedCommandLine("twice");
    zvedRunQueue();
    EXPECT_EQ(s_seen, (Texts {"once", "twice"}));
}

TEST_F(QueueTest, anUnknownWordIsToldAndDropsTheRestOfItsMacro)
{
    EXPECT_EQ(run("_.NOSUCH one two"), "Unknown command: _.NOSUCH");
    EXPECT_EQ(run("_.LINETEXT x"), "");
    EXPECT_EQ(s_seen, (Texts {"x"}));
}

TEST_F(QueueTest, aFailedCommandPutsItsChangesBack)
{
    EXPECT_EQ(run("_.FAILS"), "It went wrong.");
    EXPECT_EQ(entityCount(), 0);
    EXPECT_EQ(log.lines.back(), "fail FAILS");
    EXPECT_FALSE(database->canUndo());
}

TEST_F(QueueTest, anErrorThatIsThrownFailsTheCommand)
{
    EXPECT_EQ(run("_.THROWS"), "thrown");
    EXPECT_EQ(log.lines.back(), "fail THROWS");
    EXPECT_EQ(commandActive(), 0);
}

TEST_F(QueueTest, errorsOfTheStandardLibraryFailTheCommandToo)
{
    EXPECT_EQ(run("_.THROWSOTHER"), "too long");
    EXPECT_EQ(log.lines.back(), "fail THROWSOTHER");
    EXPECT_EQ(commandActive(), 0);
    EXPECT_EQ(run("_.HIDDEN"), "");
}

TEST_F(QueueTest, aListenerThatThrowsAtThePuttingBackTooLeavesNothingOpen)
{
    {
        const Refuser refuser(*database);
        EXPECT_EQ(run("_.FAILS"), "refused");
        EXPECT_EQ(log.lines.back(), "fail FAILS");
    }
    EXPECT_EQ(commandActive(), 0);
    EXPECT_EQ(entityCount(), 0);
    EXPECT_EQ(database->frameDepth(), 0);
    EXPECT_FALSE(database->canUndo());
    database->setLtscale(2.0);
    EXPECT_TRUE(database->canUndo()) << "the step of its own has ended";
}

TEST_F(QueueTest, cmdactiveTellsWhatRuns)
{
    EXPECT_EQ(commandActive(), 0);
    run("_.WORDS one two");
    EXPECT_EQ(s_active, 1);
    run("_.WORDS 'INSIDE one two");
    EXPECT_EQ(s_active, 3);
    EXPECT_EQ(s_seen, (Texts {"one", "two", "one", "two"}));
    zvedCommandLine("INSIDE", true);
    zvedRunQueue();
    EXPECT_EQ(s_active, 5);
    zvedDialogStarted();
    EXPECT_EQ(commandActive(), 8);
    zvedDialogEnded();
    EXPECT_EQ(commandActive(), 0);
}

TEST_F(QueueTest, theApostropheMakesACommandTransparentAtThePromptToo)
{
    run("'INSIDE");
    EXPECT_EQ(s_active, 2);
    run("'HIDDEN"); // not one that may be transparent
    EXPECT_EQ(s_active, 1);
}

TEST_F(QueueTest, anUnseenMacroLeavesNoLine)
{
    TestHost host;
    zvedSetHost(&host);
    document->editingContext()->displayContext()->setCommandEcho(false);
    zvedMenuMacro("_.LINETEXT x", false);
    document->editingContext()->displayContext()->setCommandEcho(true);
    zvedRunQueue();
    EXPECT_TRUE(host.history.empty());
    run("_.LINETEXT y");
    EXPECT_FALSE(host.history.empty());
}

TEST_F(QueueTest, theHostIsToldOfEveryMacro)
{
    TestHost host;
    zvedSetHost(&host);
    zvedMenuMacro("_.LINETEXT x", false);
    EXPECT_EQ(host.filled, 1);
    EXPECT_TRUE(s_seen.empty()); // not before the editor is idle
    zvedRunQueue();
    EXPECT_EQ(s_seen, (Texts {"x"}));
}

TEST_F(QueueTest, commandsNeedADrawingUnlessTheySayOtherwise)
{
    zvDocManagerPtr()->closeDocument(document);
    EXPECT_EQ(run("_.LINETEXT x"), "No drawing is open: LINETEXT");
    EXPECT_EQ(run("_.NEW"), "");
    EXPECT_EQ(zvDocManagerPtr()->documentCount(), 1);
}

TEST_F(QueueTest, removedCommandsAreUnknown)
{
    EXPECT_EQ(zvedCommandStack()->removeCmd("TEST", "words"), Zv::eOk);
    EXPECT_EQ(zvedCommandStack()->removeCmd("TEST", "WORDS"), Zv::eKeyNotFound);
    EXPECT_NE(run("_.WORDS"), "");
    EXPECT_EQ(zvedCommandStack()->addCommand("TEST", "FAILS", "FAILS", 0, askWords, nullptr, -1, ZvRxResourceInstance(nullptr), 0),
              Zv::eDuplicateKey);
}
