// SPDX-License-Identifier: MIT
#ifndef ZVEDITOR_H
#define ZVEDITOR_H

#include "base/zvrxobject.h"
#include "base/zvsmartptr.h"
#include "base/zvstring.h"
#include "core/zvedselection.h"
#include "db/zvdbdatabase.h"

#include <vector>

/// Listens to the editor. The order of the first six operations is binding. Names are global command names.
class ZV_EXPORT ZvEditorReactor : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvEditorReactor)
public:
    /// Before the command's first change.
    virtual void commandWillStart(const ZvString &name);
    /// After its last change. One of ended, cancelled and failed follows every start; nested commands call too.
    virtual void commandEnded(const ZvString &name);
    /// The command ended without its result; its changes were put back where it made any.
    virtual void commandCancelled(const ZvString &name);
    /// A variable was set, by whatever route; \a success is false when it was refused.
    virtual void sysVarChanged(const ZvString &name, bool success);
    /// The pick-first set of the current document has changed.
    virtual void pickfirstModified();
    /// Another layout of the current drawing is shown.
    virtual void layoutSwitched(const ZvString &layoutName);
    /// The command could not do its work; its changes were put back.
    virtual void commandFailed(const ZvString &name);
};

/// "ZvEditor" in the system registry: where commands run.
class ZV_EXPORT ZvEditor : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvEditor)
public:
    ZvEditor();
    ~ZvEditor() override;
    /// Adding one twice keeps one; removing an absent one is nothing. Not owned.
    void addReactor(ZvEditorReactor *reactor);
    void removeReactor(ZvEditorReactor *reactor);

    /// Tells all listeners.
    void fireSysVarChanged(const ZvString &name, bool success);
    /// Tells all listeners.
    void firePickfirstModified();
    /// Tells all listeners.
    void fireLayoutSwitched(const ZvString &name);
    /// Tells all listeners.
    void fireCommandWillStart(const ZvString &name);
    /// How a command came to its end.
    enum CommandEnd { kEnded, kCancelled, kFailed };
    /// Tells all listeners, by the operation for \a end.
    void fireCommandDone(const ZvString &name, CommandEnd end);

private:
    struct Private;
    Private *d;
};

/// The editor, or null before the core is started.
ZV_EXPORT ZvEditor *zvedEditor();

class ZvApDocument;
class ZvRxResourceInstance;
/// What a command runs: no arguments, no result.
typedef void (*ZvEdCommandFunction)();

/// A command of the stack.
struct ZV_EXPORT ZvEdCommand
{
    /// Bits of the flags.
    enum Flag : int {
        kModal = 0,
        kTransparent = 0x1, ///< May run while another waits for input, called with a leading "'".
        kUsePickSet = 0x2, ///< Sees the pick-first set.
        kKeepPickSet = 0x4, ///< Leaves the pick-first set in place when it starts and ends.
        kNoUndoMark = 0x8, ///< Makes no undo step of its own (UNDO, REDO, views, files).
        kNoHistory = 0x10, ///< Is not offered for repetition.
        kNoDocument = 0x20, ///< Runs without an open drawing.
        kInternal = 0x10000, ///< For programs; not listed or completed.
        kNoEcho = 0x400000, ///< Leaves no line in the history.
        kNoActionRecord = 0x800000,
    };
    ZvString group; ///< Of the program that brought it.
    ZvString globalName; ///< The same in every language.
    ZvString localName; ///< In the language of the user.
    int flags = 0; ///< Bits of Flag.
    ZvEdCommandFunction function = nullptr; ///< What the command does.
    ZvRxObject *context = nullptr; ///< What was handed to addCommand(); not owned.
    int code = -1; ///< What was handed to addCommand(); -1 for none.
};

/// "ACRX_REGISTERED_COMMANDS" in the system registry. Names are compared without case.
class ZV_EXPORT ZvEdCommandStack : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvEdCommandStack)
public:
    ZvEdCommandStack();
    ~ZvEdCommandStack() override;
    /// eDuplicateKey when the group has a command of that global name. The resource instance is not kept. The last
    /// argument is 0.
    Zv::ErrorStatus addCommand(const ZvString &group, const ZvString &globalName, const ZvString &localName, int flags,
                               ZvEdCommandFunction function, ZvRxObject *context, int commandCode,
                               const ZvRxResourceInstance &resource, int extra);
    /// An unknown command: nothing.
    Zv::ErrorStatus removeCmd(const ZvString &group, const ZvString &globalName);
    /// By local name, or by global name with a leading "_"; a leading "." makes no difference here. Null when unknown.
    const ZvEdCommand *lookUp(const ZvString &name) const;
    /// All commands, sorted by global name.
    void commands(std::vector<const ZvEdCommand *> &list) const;

private:
    struct Private;
    Private *d;
};

/// The command stack, or null before the core is started.
ZV_EXPORT ZvEdCommandStack *zvedCommandStack();

/// Where a command's texts come from; a null module is the program itself.
class ZV_EXPORT ZvRxResourceInstance
{
public:
    /// \a module is a handle of the operating system's, or null.
    explicit ZvRxResourceInstance(void *module) : m_module(module) { }
    /// The handle; null for the program itself.
    void *module() const { return m_module; }

private:
    void *m_module;
};

// ---- running commands ---------------------------------------------------------------------------

/// Queues a menu macro. It runs when the editor is next idle in the host's event loop, or when the queue is run to its
/// end. "^C" cancels the running command; ";", a line end and the macro's own end mean Enter, and so does a blank. A
/// prompt that takes text with blanks takes these and a "^C" that does not begin the macro as text: names hold both. The
/// end right behind ";" or a line end is no second Enter. The whole macro is unseen when the display context's command
/// echo is off at the time of the call. \a resume is accepted as told by the callers and has no effect here.
ZV_EXPORT int zvedMenuMacro(const ZvString &macro, bool resume);
/// One line of a script or of the command line: as a macro, but "^C" and ";" stand for themselves, and an empty line is
/// Enter, too.
ZV_EXPORT int zvedCommandLine(const ZvString &line, bool fromScript = false);
/// What a view feeds: a point in world coordinates, picked entities, Enter.
ZV_EXPORT void zvedFeedPoint(const ZvGePoint3d &point);
/// Entities that were picked in the view.
ZV_EXPORT void zvedFeedSelection(const std::vector<ZvDbObjectId> &ids);
/// Enter without a value.
ZV_EXPORT void zvedFeedEnter();
/// Runs the queue until it is empty. Does nothing while a command runs: that takes what is queued. A command that asks for more than the queue holds waits for the host's input, or is
/// cancelled where there is no host. False when a command failed or a word was no command; the text tells which.
ZV_EXPORT bool zvedRunQueue(ZvString *error = nullptr);
/// True while there is something queued.
ZV_EXPORT bool zvedQueueHasInput();
/// Cancels the running command, all nested ones included, when it next asks for input. False when none runs.
ZV_EXPORT bool zvedCancelCommand();
/// Name of the command that runs, innermost; empty when none does.
ZV_EXPORT ZvString zvedRunningCommand();

/// Brings back the coordinate system before the current one, as an undoable command.
ZV_EXPORT void zvedRestorePreviousUCS();

// ---- asking for input, inside a command ------------------------------------------------------------

/// Outcome of a request for input.
enum class ZvEdInput {
    kNormal, ///< A value came.
    kNone, ///< Enter without a value: the default.
    kKeyword, ///< One of the keywords.
    kCancel, ///< Cancelled: the command has to return.
};

/// What a request is about, for the host that shows it.
struct ZV_EXPORT ZvEdPrompt
{
    /// What is asked for.
    enum Kind { kPoint, kCorner, kDistance, kAngle, kString, kStringWithBlanks, kInteger, kReal, kKeyword, kSelection };
    Kind kind = kPoint; ///< What is asked for.
    ZvString text; ///< Shown as it stands.
    ZvString keywords; ///< Global names, separated by blanks; capitals are the abbreviation.
    ZvGePoint3d base; ///< Point to draw a rubber band from.
    bool hasBase = false; ///< Whether \a base counts.
    bool allowNone = false; ///< Enter without a value is an answer.
    bool allowOther = false; ///< A text that is no value and no keyword comes as if it were a keyword.
};

/// A point in world coordinates; \a keyword is written for the outcome kKeyword.
ZV_EXPORT ZvEdInput zvedGetPoint(const ZvEdPrompt &prompt, ZvGePoint3d &point, ZvString *keyword = nullptr);
/// A number, or a point measured from the base.
ZV_EXPORT ZvEdInput zvedGetDistance(const ZvEdPrompt &prompt, double &distance, ZvString *keyword = nullptr);
/// Radians; degrees at the command line.
ZV_EXPORT ZvEdInput zvedGetAngle(const ZvEdPrompt &prompt, double &angle, ZvString *keyword = nullptr);
/// Any number.
ZV_EXPORT ZvEdInput zvedGetReal(const ZvEdPrompt &prompt, double &value, ZvString *keyword = nullptr);
/// A whole number.
ZV_EXPORT ZvEdInput zvedGetInteger(const ZvEdPrompt &prompt, int &value, ZvString *keyword = nullptr);
/// A text; with blanks up to the end of the line for kStringWithBlanks.
ZV_EXPORT ZvEdInput zvedGetString(const ZvEdPrompt &prompt, ZvString &text);
/// One of the keywords.
ZV_EXPORT ZvEdInput zvedGetKeyword(const ZvEdPrompt &prompt, ZvString &keyword);
/// Entities: the pick-first set where the command uses it and it is not empty; otherwise picks, "ALL", "Window",
/// "Crossing", "Last", "Previous", "LAyer", handles, until Enter.
ZV_EXPORT ZvEdInput zvedGetSelection(const ZvEdPrompt &prompt, std::vector<ZvDbObjectId> &ids);
/// A line in the history. Inside an unseen macro: nothing.
ZV_EXPORT void zvedPrint(const ZvString &text);
/// Makes the running command fail: it ends as failed, its changes are put back, and the history has the text.
ZV_EXPORT void zvedFailCommand(const ZvString &text);

/// What the editor asks of the program that hosts it. The editor works without one.
class ZV_EXPORT ZvEdHost
{
public:
    virtual ~ZvEdHost();
    /// Something was queued: run the queue (zvedRunQueue) when the event loop is next idle.
    virtual void queueFilled() = 0;
    /// A command waits for input. Run the event loop until zvedQueueHasInput() or the command is cancelled. False when
    /// no more input will come: the command is cancelled.
    virtual bool waitForInput(const ZvEdPrompt &prompt) = 0;
    /// A line of the history.
    virtual void print(const ZvString &text) = 0;
    /// Views, for ZOOM, PAN, REGEN and -VIEW. \a view names what is wanted of the view that shows \a document.
    struct ViewRequest
    {
        /// What the view is to show.
        enum Kind { kExtents, kWindow, kScale, kCenter, kPan, kDirection, kRegen, kNamed, kPrevious };
        Kind kind = kExtents; ///< Tells which of the members below count.
        ZvGePoint3d first; ///< Corner, centre, or start of the shift.
        ZvGePoint3d second; ///< Opposite corner, or end of the shift.
        double value = 0.0; ///< Scale factor, or height.
        ZvGeVector3d direction; ///< From the target to the eye.
        ZvDbObjectId view; ///< Of kNamed.
    };
    /// Changes what the view of the current document shows; ignored without a view.
    virtual void changeView(const ViewRequest &request) = 0;
    /// Entities at a point (within the pick box) or in a window, topmost first; \a crossing takes those that it cuts.
    virtual void pick(const ZvGePoint3d &point, std::vector<ZvDbObjectId> &ids) = 0;
    /// The same in a window between two corners, in world coordinates.
    virtual void pickWindow(const ZvGePoint3d &first, const ZvGePoint3d &second, bool crossing, std::vector<ZvDbObjectId> &ids) = 0;
    /// What is seen now, to save as a named view: false without a view.
    struct ViewState
    {
        ZvGePoint2d center; ///< Middle of the picture, in display coordinates.
        /// Size of what is seen, in drawing units.
        double width = 0.0;
        double height = 0.0;
        ZvGePoint3d target; ///< The point looked at, in world coordinates.
        ZvGeVector3d direction {0, 0, 1}; ///< From the target to the eye.
        double twist = 0.0; ///< Radians.
    };
    /// False without a view; \a state is left alone then.
    virtual bool currentView(ViewState &state) = 0;
    /// A file name for OPEN and SAVEAS when none is given; empty when the user gave up.
    virtual ZvString askFileName(bool saving, const ZvString &suggestion) = 0;
    /// "Save changes before closing?": true when the close may go on.
    virtual bool mayClose(ZvApDocument *document) = 0;
    /// Progress of long work; may be null.
    virtual ZvDbProgress *beginProgress(const ZvString &title) = 0;
    /// Ends what beginProgress() began.
    virtual void endProgress() = 0;
    /// Tells the user what went wrong, or what reading a file had to report.
    virtual void showFileReport(const ZvString &path, const ZvDbFileReport &report) = 0;
    /// QUIT: closes the program when every document may be closed.
    virtual void quit() = 0;
};

/// Not owned. Null takes it away.
ZV_EXPORT void zvedSetHost(ZvEdHost *host);
/// Null without one.
ZV_EXPORT ZvEdHost *zvedHost();

#endif
