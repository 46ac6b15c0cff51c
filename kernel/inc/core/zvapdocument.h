// SPDX-License-Identifier: MIT
#ifndef ZVAPDOCUMENT_H
#define ZVAPDOCUMENT_H

#include "base/zvarray.h"
#include "base/zvrxobject.h"
#include "base/zvstring.h"
#include "core/zvedselection.h"
#include "db/zvdbdatabase.h"

class ZvApDocument;

/// What the editing context shows with: states of the display, two of which the library uses.
class ZV_EXPORT ZvEdDisplayContext
{
public:
    /// Whether commands echo at the command line. Switched off around a macro that a control issues: the macro takes
    /// the state at the time of the call, and runs unseen when it was off.
    bool commandEcho() const { return m_commandEcho; }
    void setCommandEcho(bool on) { m_commandEcho = on; }
    /// Whether colours are shown by the palette in force.
    bool paletteState() const { return m_paletteState; }
    void setPaletteState(bool on) { m_paletteState = on; }

private:
    bool m_commandEcho = true;
    bool m_paletteState = true;
};

/// The editing side of a document: display states and selection.
class ZV_EXPORT ZvEdContext
{
public:
    /// Never null.
    ZvEdDisplayContext *displayContext() { return &m_display; }
    /// Null in the document manager's default context, which belongs to no drawing.
    ZvEdSelectionHolder *selectionHolder() { return m_selection; }
    void setSelectionHolder(ZvEdSelectionHolder *holder) { m_selection = holder; }

private:
    ZvEdDisplayContext m_display;
    ZvEdSelectionHolder *m_selection = nullptr; // not owned
};

/// An open drawing.
class ZV_EXPORT ZvApDocument : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvApDocument)
public:
    ~ZvApDocument() override;
    /// Null is a state of its own: a document whose drawing is not there (yet).
    ZvDbDatabase *database() const;
    /// Null is a state that callers survive.
    ZvEdContext *editingContext() const;
    /// Hides the editing context, or shows it again: a state that callers survive.
    void setEditingContextAvailable(bool available);
    /// Full path; empty for a drawing that was never saved.
    ZvString fileName() const;
    /// What a tab shows: the file's name, or "Drawing1".
    ZvString title() const;
    /// Changed since it was read, made or saved; false without a drawing.
    bool isModified() const;
    /// What the user data slot holds is the application's business.
    void *userData() const;
    void setUserData(void *data);

private:
    friend class ZvApDocManager;
    ZvApDocument();
    struct Private;
    Private *d;
};

/// Listens to the document manager. The order is binding.
class ZV_EXPORT ZvApDocManagerReactor : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvApDocManagerReactor)
public:
    /// curDatabase() is already the new document's, and the document counts as open.
    virtual void documentCreated(ZvApDocument *document);
    /// curDatabase() is still the dying document's where that is current.
    virtual void documentToBeDestroyed(ZvApDocument *document);
    /// The document is gone; its full path.
    virtual void documentDestroyed(const ZvString &fileName);
    /// Another document is current. Not told after the last one closed.
    virtual void documentBecameCurrent(ZvApDocument *document);
    /// Another document is about to become current.
    virtual void documentToBeActivated(ZvApDocument *document);
};

/// The open drawings.
class ZV_EXPORT ZvApDocManager : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvApDocManager)
public:
    ZvApDocManager();
    ~ZvApDocManager() override;
    /// Adding one twice keeps one; removing an absent one is nothing. Not owned.
    void addReactor(ZvApDocManagerReactor *reactor);
    void removeReactor(ZvApDocManagerReactor *reactor);

    /// Number of open documents.
    int documentCount() const;
    /// By its place, in order of opening; null out of range.
    ZvApDocument *documentAt(int index) const;
    /// Null when there is none.
    ZvApDocument *currentDocument() const;
    /// Cancels a running command of the document before. Null is refused while documents are open.
    void setCurrentDocument(ZvApDocument *document);
    /// The context for the time when the current document has none, or there is no document. Never null.
    ZvEdContext *defaultEditingContext() const;

    /// An empty drawing; becomes current.
    ZvApDocument *newDocument(bool metric = true);
    /// Reads a file; becomes current. Null, with the report telling why, when the file cannot be read. A file that is
    /// open already becomes current again.
    ZvApDocument *openDocument(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress = nullptr);
    /// A document around a database of the caller's; null for one without a drawing.
    ZvApDocument *addDocument(const ZvDbDatabasePtr &database, const ZvString &path);
    /// Saves under \a path, which becomes the document's own. The report tells why it failed.
    Zv::ErrorStatus saveDocument(ZvApDocument *document, const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress = nullptr);
    /// Closes without asking; the next document becomes current.
    void closeDocument(ZvApDocument *document);

private:
    struct Private;
    Private *d;
};

/// The document manager of the system object. Never null while the core is started.
ZV_EXPORT ZvApDocManager *zvDocManagerPtr();

#endif
