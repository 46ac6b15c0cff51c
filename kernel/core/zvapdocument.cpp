// SPDX-License-Identifier: MIT
#include "core/zvapdocument.h"

#include "base/zvreactorlist.h"
#include "core/zveditor.h"
#include "core/zvsystem.h"
#include "zvcore_p.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

ZVRX_DEFINE_MEMBERS(ZvApDocument, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvApDocManager, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvApDocManagerReactor, ZvRxObject)

void ZvApDocManagerReactor::documentCreated(ZvApDocument *) { }
void ZvApDocManagerReactor::documentToBeDestroyed(ZvApDocument *) { }
void ZvApDocManagerReactor::documentDestroyed(const ZvString &) { }
void ZvApDocManagerReactor::documentBecameCurrent(ZvApDocument *) { }
void ZvApDocManagerReactor::documentToBeActivated(ZvApDocument *) { }

namespace {

/// Carries what happens in a drawing to the editor's listeners.
class DatabaseListener : public ZvStaticRxObject<ZvDbDatabaseReactor>
{
public:
    void headerVariableChanged(const ZvDbDatabase *database, const ZvString &name) override
    {
        if (ZvEditor *editor = zvedEditor())
            editor->fireSysVarChanged(name, true);
        if (database == zvcoreCurrentDatabase())
            tellOfLayout(database);
    }
    void rememberLayout(const ZvDbDatabase *database) { m_layout = database ? database->currentLayoutName() : ZvString(); }

private:
    /// The layout hangs on more than one variable; what counts is whether another one is shown.
    void tellOfLayout(const ZvDbDatabase *database)
    {
        const ZvString layout = database->currentLayoutName();
        if (layout == m_layout)
            return;
        m_layout = layout;
        if (ZvEditor *editor = zvedEditor())
            editor->fireLayoutSwitched(layout);
        CHcSystem *system = CHcSystem::instance();
        ZvApApplication *application = system ? system->application() : nullptr;
        ZvDbLayoutManager *layouts = application ? application->layoutManager() : nullptr;
        if (layouts)
            layouts->fireLayoutBecameCurrent(database, layout);
    }

    ZvString m_layout;
};

ZvString lastComponent(const ZvString &path)
{
    int from = 0;
    for (int slash = path.find(L'/'); slash >= 0; slash = path.find(L'/', from))
        from = slash + 1;
    return path.mid(from);
}

/// One spelling for one file; as it stands where there is no such file yet.
ZvString absolutePath(const ZvString &path)
{
    char *resolved = realpath(path.toUtf8().c_str(), nullptr);
    const ZvString result = resolved ? ZvString(resolved) : path;
    std::free(resolved);
    return result;
}

}

struct ZvApDocument::Private
{
    ZvDbDatabasePtr database;
    ZvEdContext context;
    ZvEdSelectionHolder selection;
    DatabaseListener listener;
    ZvString fileName;
    ZvString title;
    bool contextAvailable = true;
    void *userData = nullptr;
};

ZvApDocument::ZvApDocument() : d(new Private)
{
    d->context.setSelectionHolder(&d->selection);
}

ZvApDocument::~ZvApDocument()
{
    if (!d->database.isNull())
        d->database->removeReactor(&d->listener);
    delete d;
}

ZvDbDatabase *ZvApDocument::database() const
{
    return d->database.get();
}

ZvEdContext *ZvApDocument::editingContext() const
{
    return d->contextAvailable ? &d->context : nullptr;
}

void ZvApDocument::setEditingContextAvailable(bool available)
{
    d->contextAvailable = available;
}

ZvString ZvApDocument::fileName() const
{
    return d->fileName;
}

ZvString ZvApDocument::title() const
{
    return d->title;
}

bool ZvApDocument::isModified() const
{
    return !d->database.isNull() && d->database->isModified();
}

void *ZvApDocument::userData() const
{
    return d->userData;
}

void ZvApDocument::setUserData(void *data)
{
    d->userData = data;
}

struct ZvApDocManager::Private
{
    std::vector<std::unique_ptr<ZvApDocument>> documents;
    ZvApDocument *current = nullptr;
    ZvReactorList<ZvApDocManagerReactor> reactors;
    ZvEdContext defaultContext;
    int untitled = 0;

    void makeCurrent(ZvApDocument *document)
    {
        current = document;
        zvdbSetCurDatabase(document ? document->database() : nullptr);
        if (document)
            document->d->listener.rememberLayout(document->database());
    }
};

ZvApDocManager::ZvApDocManager() : d(new Private) { }

ZvApDocManager::~ZvApDocManager()
{
    zvdbSetCurDatabase(nullptr);
    delete d;
}

void ZvApDocManager::addReactor(ZvApDocManagerReactor *reactor)
{
    d->reactors.add(reactor);
}

void ZvApDocManager::removeReactor(ZvApDocManagerReactor *reactor)
{
    d->reactors.remove(reactor);
}

int ZvApDocManager::documentCount() const
{
    return int(d->documents.size());
}

ZvApDocument *ZvApDocManager::documentAt(int index) const
{
    return index >= 0 && index < documentCount() ? d->documents[std::size_t(index)].get() : nullptr;
}

ZvApDocument *ZvApDocManager::currentDocument() const
{
    return d->current;
}

void ZvApDocManager::setCurrentDocument(ZvApDocument *document)
{
    if (!document || document == d->current)
        return;
    zvcoreCancelWaitingCommand();
    d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentToBeActivated(document); });
    d->makeCurrent(document);
    d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentBecameCurrent(document); });
}

ZvEdContext *ZvApDocManager::defaultEditingContext() const
{
    return &d->defaultContext;
}

ZvApDocument *ZvApDocManager::newDocument(bool metric)
{
    return addDocument(ZvDbDatabase::create(metric), ZvString());
}

ZvApDocument *ZvApDocManager::openDocument(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress)
{
    const ZvString file = absolutePath(path);
    for (const auto &document : d->documents) {
        if (document->fileName() == file) {
            setCurrentDocument(document.get());
            report = ZvDbFileReport();
            return document.get();
        }
    }
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    if (database->readFile(file, report, progress) != Zv::eOk)
        return nullptr;
    return addDocument(database, file);
}

ZvApDocument *ZvApDocManager::addDocument(const ZvDbDatabasePtr &database, const ZvString &path)
{
    zvcoreCancelWaitingCommand();
    d->documents.emplace_back(new ZvApDocument);
    ZvApDocument *document = d->documents.back().get();
    document->d->database = database;
    document->d->fileName = path;
    document->d->title = path.isEmpty() ? ZvString(L"Drawing") + ZvString(std::to_wstring(++d->untitled).c_str())
                                        : lastComponent(path);
    if (!database.isNull())
        database->addReactor(&document->d->listener);
    d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentToBeActivated(document); });
    d->makeCurrent(document);
    d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentCreated(document); });
    d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentBecameCurrent(document); });
    return document;
}

Zv::ErrorStatus ZvApDocManager::saveDocument(ZvApDocument *document, const ZvString &path, ZvDbFileReport &report,
                                             ZvDbProgress *progress)
{
    if (!document || !document->database()) {
        report.status = Zv::eNoDatabase;
        report.message = L"There is no drawing to save.";
        return report.status;
    }
    const ZvString target = path.isEmpty() ? document->fileName() : path;
    const Zv::ErrorStatus status = document->database()->saveAs(target, report, progress);
    if (status == Zv::eOk) {
        document->d->fileName = absolutePath(target);
        document->d->title = lastComponent(document->d->fileName);
        document->database()->setModified(false);
    }
    return status;
}

void ZvApDocManager::closeDocument(ZvApDocument *document)
{
    const auto it = std::find_if(d->documents.begin(), d->documents.end(),
                                 [document](const auto &open) { return open.get() == document; });
    if (it == d->documents.end())
        return;
    if (document == d->current)
        zvcoreCancelWaitingCommand();
    d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentToBeDestroyed(document); });
    // The listeners may have closed others.
    const auto position = std::find_if(d->documents.begin(), d->documents.end(),
                                       [document](const auto &open) { return open.get() == document; });
    if (position == d->documents.end())
        return;
    const auto index = std::size_t(position - d->documents.begin());
    const ZvString fileName = document->fileName();
    const std::unique_ptr<ZvApDocument> dying = std::move(*position);
    d->documents.erase(position);
    const bool wasCurrent = document == d->current;
    ZvApDocument *next = nullptr;
    if (wasCurrent) {
        if (!d->documents.empty())
            next = d->documents[std::min(index, d->documents.size() - 1)].get();
        d->makeCurrent(next);
    }
    d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentDestroyed(fileName); });
    if (next)
        d->reactors.deliver([&](ZvApDocManagerReactor &reactor) { reactor.documentBecameCurrent(next); });
}

ZvDbDatabase *zvcoreCurrentDatabase()
{
    ZvApDocManager *documents = zvDocManagerPtr();
    ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    return document ? document->database() : nullptr;
}
