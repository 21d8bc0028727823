#include "platform/storage/KeyChainStore.h"

#include "platform/Logging.h"
#include "platform/storage/PrivateFile.h"
#include "platform/storage/SettingsFile.h"

#include <QLibrary>
#include <qt6keychain/keychain.h>

using namespace QKeychain;

namespace {

// The service not running, refusing, or locked for good all come down to this: the file answers
// instead.
bool serviceFailed(const Job *job)
{
    return job->error() != NoError && job->error() != EntryNotFound;
}

void reportFallback(const Job *job)
{
    qCInfo(lcPlatform) << "keyring not usable, items are kept in a private file:"
                       << job->errorString();
}

}

void KeyChainStore::loadAhead()
{
    // Opened by name only, and never closed; where another service is used it lies unused.
    QLibrary(QStringLiteral("secret-1"), 0).load();
}

KeyChainStore::KeyChainStore(const QString &profileName, const QString &fallbackFile)
    : m_profileName(profileName)
    , m_fallback(std::make_unique<SettingsFile>(fallbackFile))
{
}

KeyChainStore::~KeyChainStore() = default;

QString KeyChainStore::itemName(const QString &key) const
{
    return m_profileName.isEmpty() ? key : key + u'@' + m_profileName;
}

// The jobs delete themselves, and only when they have been answered: the service's library calls
// them back however long it takes, whether this store still lives or not.

void KeyChainStore::load(const QString &key, Loaded loaded)
{
    auto *job = new ReadPasswordJob(itemName(key));
    job->setKey(itemName(key));
    connect(job, &Job::finished, this, [this, job, key, loaded = std::move(loaded)] {
        std::optional<QByteArray> data;
        if (serviceFailed(job))
            reportFallback(job);
        // A service that runs for the first time knows nothing of what the file holds.
        if (job->error() == NoError)
            data = job->binaryData();
        else if (m_fallback->value(key).isValid())
            data = m_fallback->value(key).toByteArray();
        if (data && job->error() == EntryNotFound)
            moveToService(key, *data);
        loaded(data);
    });
    job->start();
}

void KeyChainStore::moveToService(const QString &key, const QByteArray &data)
{
    auto *job = new WritePasswordJob(itemName(key));
    job->setKey(itemName(key));
    job->setBinaryData(data);
    connect(job, &Job::finished, this, [this, job, key] {
        if (job->error() == NoError)
            removeFromFile(key);
    });
    job->start();
}

void KeyChainStore::removeFromFile(const QString &key)
{
    m_fallback->remove(key);
    m_fallback->synchronize();
}

void KeyChainStore::save(const QString &key, const QByteArray &data, Done done)
{
    auto *job = new WritePasswordJob(itemName(key));
    job->setKey(itemName(key));
    job->setBinaryData(data);
    connect(job, &Job::finished, this, [this, job, key, data, done = std::move(done)] {
        bool stored = job->error() == NoError;
        if (serviceFailed(job)) {
            PrivateFile::prepareSettings(m_fallback->fileName());
            m_fallback->setValue(key, data);
            stored = m_fallback->synchronize();
        }
        if (done)
            done(stored);
    });
    job->start();
}

void KeyChainStore::deleteKeyData(const QString &key, Done done)
{
    auto *job = new DeletePasswordJob(itemName(key));
    job->setKey(itemName(key));
    connect(job, &Job::finished, this, [this, key, done = std::move(done)] {
        removeFromFile(key);
        if (done)
            done(true);
    });
    job->start();
}
