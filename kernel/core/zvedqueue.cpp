// SPDX-License-Identifier: MIT
#include "zvedqueue_p.h"

#include "base/zverror.h"
#include "core/zvapdocument.h"
#include "core/zvedvars.h"
#include "zvcore_p.h"

#include <deque>
#include <iterator>

namespace {

/// One macro, line, or piece that a view fed.
struct Segment
{
    enum Kind { kMacro, kLine, kScriptLine, kPiece };
    Kind kind = kMacro;
    ZvString text;
    int position = 0;
    bool unseen = false;
    ZvEdToken piece;
};

/// A command that runs, outermost first.
struct Running
{
    ZvEdCommand command;
    ZvEditor::CommandEnd end = ZvEditor::kEnded;
    ZvString failure;
    bool transparent = false;
};

struct State
{
    std::deque<Segment> queue;
    std::vector<Running> running;
    ZvEdHost *host = nullptr;
    ZvString lastCommand;
    ZvString firstError;
    int dialogs = 0;
    int scripts = 0; ///< Lines of a script that are being worked on.
    bool inRun = false;
    bool waiting = false; ///< The host waits for input.
    bool unseen = false; ///< What runs came from an unseen macro.
};

State s;

bool isEnterCharacter(wchar_t c)
{
    return c == L';' || c == L'\n' || c == L'\r';
}

void push(Segment segment)
{
    s.queue.push_back(std::move(segment));
    if (s.host)
        s.host->queueFilled();
}

ZvEdToken tokenOf(ZvEdToken::Kind kind)
{
    ZvEdToken token;
    token.kind = kind;
    return token;
}

/// Takes a piece off the front of the queue.
ZvEdToken takeToken(bool withBlanks)
{
    Segment &segment = s.queue.front();
    s.unseen = segment.unseen;
    s.scripts = segment.kind == Segment::kScriptLine ? 1 : 0;
    if (segment.kind == Segment::kPiece) {
        const ZvEdToken token = segment.piece;
        s.queue.pop_front();
        return token;
    }
    const ZvString &text = segment.text;
    const bool isMacro = segment.kind == Segment::kMacro;
    const int from = segment.position;
    int at = from;
    const auto isCancel = [&](int i) {
        if (!isMacro || (withBlanks && i > 0))
            return false; // a text with blanks may be a name that holds it
        return text.at(i) == L'^' && i + 1 < text.length() && (text.at(i + 1) == L'C' || text.at(i + 1) == L'c');
    };
    if (from < text.length() && isCancel(from)) {
        segment.position += 2;
        if (segment.position >= text.length())
            s.queue.pop_front();
        return tokenOf(ZvEdToken::kCancel);
    }
    const auto isEnd = [&](int i) {
        const wchar_t c = text.at(i);
        return isMacro ? isEnterCharacter(c) || isCancel(i) || (c == L' ' && !withBlanks) : c == L' ' && !withBlanks;
    };
    while (at < text.length() && !isEnd(at))
        ++at;
    ZvEdToken token;
    if (at > from) {
        token.kind = ZvEdToken::kText;
        token.text = text.mid(from, at - from);
    } else {
        token.kind = ZvEdToken::kEnter;
    }
    // A text and the character that ends it are one piece; so is the end of the macro behind it.
    const bool atEnd = at >= text.length();
    if (!atEnd && !isCancel(at))
        ++at;
    segment.position = at;
    // A line's last blank is followed by the line's own Enter; a macro's end right behind a terminator is none.
    const bool enterIsLeft = !isMacro && !atEnd && at == text.length();
    if (at >= text.length() && !enterIsLeft)
        s.queue.pop_front();
    return token;
}

/// Drops what is left of the macro or line at hand.
void dropSegment()
{
    if (!s.queue.empty() && s.queue.front().position > 0)
        s.queue.pop_front();
}

ZvEdSelectionHolder *pickFirstHolder()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    return context ? context->selectionHolder() : nullptr;
}

/// The undo step of a command, with a frame in it for the changes of a command that fails. It holds the drawing, which
/// the command may close.
class UndoStep
{
public:
    UndoStep(ZvDbDatabase *database, const ZvString &name) : m_database(database)
    {
        if (database) {
            database->beginUndoStep(name);
            database->beginFrame();
        }
    }
    void finish(bool keep)
    {
        if (m_database.isNull())
            return;
        if (keep)
            m_database->endFrame();
        else
            putBack();
        m_database->endUndoStep();
        m_database = nullptr;
    }

private:
    /// Listeners hear of what goes back. One that throws once more has nothing to stop: the command has failed already.
    void putBack()
    {
        try {
            m_database->abortFrame();
        } catch (const std::exception &) { // NOLINT(bugprone-empty-catch)
        }
    }

    ZvDbDatabasePtr m_database;
};

void runCommand(const ZvEdCommand &command, bool transparent)
{
    ZvDbDatabase *database = zvcoreCurrentDatabase();
    if (!database && (command.flags & ZvEdCommand::kNoDocument) == 0) {
        const ZvString text = ZvString(L"No drawing is open: ") + command.globalName;
        zvedPrint(text);
        zvcoreNoteError(text);
        return;
    }
    Running entry;
    entry.command = command;
    entry.transparent = transparent;
    s.running.push_back(entry);
    const std::size_t level = s.running.size() - 1;
    constexpr int kPickSetFlags = ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
    if (ZvEdSelectionHolder *holder = pickFirstHolder(); holder && !transparent && (command.flags & kPickSetFlags) == 0)
        holder->clear();
    ZvEditor *editor = zvedEditor();
    if (editor)
        editor->fireCommandWillStart(command.globalName);
    UndoStep step((command.flags & ZvEdCommand::kNoUndoMark) ? nullptr : database, command.globalName);
    try {
        command.function();
    } catch (const std::exception &error) {
        s.running[level].end = ZvEditor::kFailed;
        s.running[level].failure = ZvString(error.what());
    }
    const ZvEditor::CommandEnd end = s.running[level].end;
    const ZvString failure = s.running[level].failure;
    step.finish(end != ZvEditor::kFailed);
    if (ZvEdSelectionHolder *holder = pickFirstHolder()) {
        if (!transparent && (command.flags & kPickSetFlags) == ZvEdCommand::kUsePickSet && end == ZvEditor::kEnded)
            holder->clear();
        else
            holder->purge();
    }
    s.running.resize(level);
    if (end == ZvEditor::kFailed) {
        zvedPrint(failure);
        zvcoreNoteError(failure);
    }
    if ((command.flags & ZvEdCommand::kNoHistory) == 0 && !transparent)
        s.lastCommand = command.globalName;
    if ((editor = zvedEditor()))
        editor->fireCommandDone(command.globalName, end);
}

/// Short forms that people type. Data, so that HELP and completion can show them.
struct Alias
{
    const char *shortForm;
    const char *command;
};
const Alias kAliases[] = {{"A", "ARC"},   {"C", "CIRCLE"}, {"CO", "COPY"},    {"CP", "COPY"},  {"COL", "COLOR"},
                          {"E", "ERASE"}, {"L", "LINE"},   {"LA", "-LAYER"},  {"LT", "-LINETYPE"}, {"LW", "LWEIGHT"},
                          {"M", "MOVE"},  {"P", "PAN"},    {"PL", "PLINE"},   {"RE", "REGEN"}, {"DT", "TEXT"},
                          {"Z", "ZOOM"},  {"-LA", "-LAYER"}, {"-LT", "-LINETYPE"}, {"V", "VIEW"}, {"-V", "-VIEW"}};

const ZvEdCommand *findCommand(const ZvString &word)
{
    ZvEdCommandStack *stack = zvedCommandStack();
    if (!stack)
        return nullptr;
    if (const ZvEdCommand *command = stack->lookUp(word))
        return command;
    for (const Alias &alias : kAliases) {
        if (word.compareNoCase(alias.shortForm) == 0)
            return stack->lookUp(alias.command);
    }
    return nullptr;
}

void runWord(const ZvString &word)
{
    const bool isTransparent = word.at(0) == L'\'';
    const ZvString name = isTransparent ? word.mid(1) : word;
    const ZvEdCommand *found = findCommand(name);
    if (!found) {
        const ZvString text = ZvString(L"Unknown command: ") + word;
        zvedPrint(text);
        zvcoreNoteError(text);
        dropSegment();
        return;
    }
    const ZvEdCommand command = *found; // it may be removed while it runs
    if ((command.flags & ZvEdCommand::kNoEcho) == 0)
        zvedPrint(ZvString(L"Command: ") + command.localName);
    runCommand(command, isTransparent && (command.flags & ZvEdCommand::kTransparent));
}

}

int zvedMenuMacro(const ZvString &macro, bool)
{
    if (macro.isEmpty())
        return ZvRes::kError;
    ZvApDocManager *documents = zvDocManagerPtr();
    if (!documents)
        return ZvRes::kError;
    ZvApDocument *document = documents->currentDocument();
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    if (!context)
        context = documents->defaultEditingContext();
    Segment segment;
    segment.kind = Segment::kMacro;
    segment.text = macro;
    segment.unseen = !context->displayContext()->commandEcho();
    push(std::move(segment));
    return ZvRes::kNormal;
}

int zvedCommandLine(const ZvString &line, bool fromScript)
{
    Segment segment;
    segment.kind = fromScript ? Segment::kScriptLine : Segment::kLine;
    segment.text = line;
    push(std::move(segment));
    return ZvRes::kNormal;
}

static void feed(ZvEdToken token)
{
    Segment segment;
    segment.kind = Segment::kPiece;
    segment.piece = std::move(token);
    push(std::move(segment));
}

void zvedFeedPoint(const ZvGePoint3d &point)
{
    ZvEdToken token = tokenOf(ZvEdToken::kPoint);
    token.point = point;
    feed(std::move(token));
}

void zvedFeedSelection(const std::vector<ZvDbObjectId> &ids)
{
    ZvEdToken token = tokenOf(ZvEdToken::kSelection);
    token.ids = ids;
    feed(std::move(token));
}

void zvedFeedEnter()
{
    feed(tokenOf(ZvEdToken::kEnter));
}

bool zvedRunQueue(ZvString *error)
{
    if (s.inRun || !s.running.empty())
        return true;
    s.inRun = true;
    s.firstError = ZvString();
    while (!s.queue.empty()) {
        ZvEdToken token = takeToken(false);
        if (token.kind == ZvEdToken::kEnter && !s.lastCommand.isEmpty()) {
            token.kind = ZvEdToken::kText;
            token.text = ZvString(L"_") + s.lastCommand;
        }
        if (token.kind == ZvEdToken::kText)
            runWord(token.text);
        s.scripts = 0;
        s.unseen = false;
    }
    s.inRun = false;
    if (error)
        *error = s.firstError;
    return s.firstError.isEmpty();
}

bool zvedQueueHasInput()
{
    return !s.queue.empty();
}

bool zvedCancelCommand()
{
    if (s.running.empty())
        return false;
    // Each nested command takes one piece, and what was queued for them goes with them.
    s.queue.clear();
    for (std::size_t i = 0; i < s.running.size(); ++i)
        feed(tokenOf(ZvEdToken::kCancel));
    return true;
}

void zvcoreCancelWaitingCommand()
{
    if (s.waiting)
        zvedCancelCommand();
}

ZvString zvedRunningCommand()
{
    return s.running.empty() ? ZvString() : s.running.back().command.globalName;
}

void zvedPrint(const ZvString &text)
{
    const bool quiet = s.unseen || (!s.running.empty() && (s.running.back().command.flags & ZvEdCommand::kNoEcho) != 0);
    if (s.host && !quiet)
        s.host->print(text);
}

void zvedFailCommand(const ZvString &text)
{
    if (s.running.empty())
        return;
    s.running.back().end = ZvEditor::kFailed;
    s.running.back().failure = text;
}

void zvedSetHost(ZvEdHost *host)
{
    s.host = host;
}

ZvEdHost *zvedHost()
{
    return s.host;
}

void zvedDialogStarted()
{
    ++s.dialogs;
}

void zvedDialogEnded()
{
    --s.dialogs;
}

int zvcoreCommandActive()
{
    int bits = 0;
    for (const Running &running : s.running)
        bits |= running.transparent ? 2 : 1;
    return bits | (s.scripts ? 4 : 0) | (s.dialogs > 0 ? 8 : 0);
}

bool zvcoreLineHasMore()
{
    return !s.queue.empty() && s.queue.front().kind != Segment::kPiece && s.queue.front().position > 0
        && s.queue.front().position < s.queue.front().text.length();
}

void zvcoreDropQueue()
{
    s.queue.clear();
    s.lastCommand = ZvString();
}

void zvcoreNoteError(const ZvString &text)
{
    if (s.firstError.isEmpty())
        s.firstError = text;
}

ZvEdToken zvcoreNextToken(const ZvEdPrompt &prompt)
{
    if (s.running.empty())
        return tokenOf(ZvEdToken::kCancel);
    const bool withBlanks = prompt.kind == ZvEdPrompt::kStringWithBlanks;
    for (;;) {
        while (s.queue.empty()) {
            s.waiting = true;
            const bool comes = s.host && s.host->waitForInput(prompt);
            s.waiting = false;
            if (!comes) {
                s.running.back().end = ZvEditor::kCancelled;
                return tokenOf(ZvEdToken::kCancel);
            }
        }
        ZvEdToken token = takeToken(withBlanks);
        if (token.kind == ZvEdToken::kCancel) {
            s.running.back().end = ZvEditor::kCancelled;
            return token;
        }
        if (token.kind == ZvEdToken::kText && token.text.length() > 1 && token.text.at(0) == L'\'') {
            const ZvEdCommand *found = findCommand(token.text.mid(1));
            if (found && (found->flags & ZvEdCommand::kTransparent)) {
                const ZvEdCommand command = *found;
                runCommand(command, true);
                continue;
            }
        }
        return token;
    }
}

void zvcorePrintPrompt(const ZvEdPrompt &prompt, const ZvString &answer)
{
    ZvString line = prompt.text;
    if (!answer.isEmpty())
        line += ZvString(L" ") + answer;
    zvedPrint(line);
}
