// SPDX-License-Identifier: MIT
#ifndef ZVDBUNDO_P_H
#define ZVDBUNDO_P_H

#include "db/zvdbdatabase.h"
#include "zvdbstub_p.h"
#include "zvdbvariables_p.h"

#include <unordered_set>

class ZvDbDatabasePrivate;

/// One change. It holds what was there before; applying it exchanges that with what is there now, so the same change
/// serves undo and redo.
struct ZvDbChange
{
    enum Kind : std::uint8_t {
        kCreated, ///< An object was added.
        kErased, ///< An object was erased or un-erased.
        kState, ///< An object's own data.
        kProperties, ///< An entity's shared properties.
        kXData, ///< An object's extended data.
        kVariable, ///< A variable of the drawing.
        kUcsHistory, ///< The coordinate systems before the current one.
    };
    struct Payload
    {
        virtual ~Payload();
    };

    Kind kind = kState;
    bool fileChanged = false; ///< Whether the object differed from its record in the file.
    std::uint32_t index = 0; ///< Position of the object, number of the variable.
    std::uint32_t properties = 0;
    std::unique_ptr<Payload> payload;
};

struct ZvDbStatePayload : ZvDbChange::Payload
{
    std::unique_ptr<ZvDbObject> state;
};

struct ZvDbXDataPayload : ZvDbChange::Payload
{
    bool isSet = false; ///< False: as the file's record has it.
    ZvDbSharedChain chain;
};

struct ZvDbVariablePayload : ZvDbChange::Payload
{
    ZvDbVariableValue value;
    bool isInFile = false; ///< As ZvDbDatabasePrivate::variableInFile.
};

/// A coordinate system with its name and orthographic number.
struct ZvDbUcs
{
    ZvGePoint3d origin;
    ZvGeVector3d x{1, 0, 0};
    ZvGeVector3d y{0, 1, 0};
    ZvDbObjectId name;
    int orthographic = 0;
};

struct ZvDbUcsPayload : ZvDbChange::Payload
{
    bool paper = false;
    std::vector<ZvDbUcs> systems;
};

/// The undo history of a database, with the steps and frames that are open.
class ZvDbUndo
{
public:
    explicit ZvDbUndo(ZvDbDatabasePrivate &database) : m_database(database) { }

    void beginStep(const ZvString &name);
    void endStep();
    void beginFrame();
    void endFrame();
    void abortFrame();
    int frameDepth() const;
    bool isOpen() const { return !m_levels.empty(); }

    /// What is about to change goes on record. Opens a step of its own outside of any; it ends when the last object
    /// that is open for write closes.
    void noteState(ZvDbStub &stub);
    /// The same for everything but an object's own data.
    void note(ZvDbChange &&change);
    /// To be called when an object that was open for write has closed, and after a variable was set.
    void endImplicitStep();

    void setMergeKey(const ZvString &key);
    /// The key before. Unlike setMergeKey() an empty key does not part the last step from what may follow.
    ZvString exchangeMergeKey(const ZvString &key);
    bool canUndo() const { return m_levels.empty() && !m_done.empty(); }
    bool canRedo() const { return m_levels.empty() && !m_undone.empty(); }
    ZvString undoName() const { return m_done.empty() ? ZvString() : m_done.back().name; }
    ZvString redoName() const { return m_undone.empty() ? ZvString() : m_undone.back().name; }
    bool undo();
    bool redo();
    void clear();
    /// The drawing is now as its file has it, or no step leads back there.
    void setSaved(bool saved) { m_savedSteps = saved ? std::ptrdiff_t(m_done.size()) : kNowhere; }
    /// Whether all that was done since the drawing was saved is undone again.
    bool isAsSaved() const { return m_savedSteps == std::ptrdiff_t(m_done.size()) && m_current.changes.empty(); }

    /// While not zero, nothing goes on record and nobody is told: the drawing puts itself in order for a file.
    int suspended = 0;

private:
    struct Step
    {
        ZvString name;
        ZvString mergeKey;
        std::vector<ZvDbChange> changes;
    };
    struct Level
    {
        enum Kind { kStep, kFrame, kImplicit };
        Kind kind;
        std::size_t mark; // changes before this level
        std::unordered_set<std::uint32_t> states; // objects whose state at its beginning is on record
    };

    void push(Level::Kind kind, const ZvString &name);
    void pop();
    void commit();
    void settleModified();

    ZvDbDatabasePrivate &m_database;
    std::vector<Level> m_levels;
    Step m_current;
    std::vector<Step> m_done;
    std::vector<Step> m_undone;
    ZvString m_mergeKey;
    static constexpr std::ptrdiff_t kNowhere = -1;
    std::ptrdiff_t m_savedSteps = 0; // steps that are done in the drawing as it was saved
    std::uint32_t m_serial = 1;
};

#endif
