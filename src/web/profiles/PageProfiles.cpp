#include "web/profiles/PageProfiles.h"

#include "platform/storage/UserDefaults.h"
#include "platform/time/MainQueue.h"
#include "web/profiles/HomePageProfile.h"
#include "web/profiles/SecondaryPageProfiles.h"

#include <QDir>
#include <QPointer>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

const QString folderNumberKey = QStringLiteral("PageFolder");
constexpr int folderNumbers = 1'000'000; // far apart enough to be told from one another
// The engine writes a last file when a profile has gone.
constexpr auto engineSettles = 2s;

// There may be a lot in it.
void removeBeside(const QString &folder)
{
    QThreadPool::globalInstance()->start([folder] { QDir(folder).removeRecursively(); });
}

}

PageProfiles::PageProfiles(
    const QString &root, HTTPCookieStorage *storage, UserDefaults *defaults, MainQueue *mainQueue)
    : m_root(root)
    , m_storage(storage)
    , m_defaults(defaults)
    , m_mainQueue(mainQueue)
{
    removeFormerFolders();
}

PageProfiles::~PageProfiles() = default;

int PageProfiles::folderNumber() const
{
    return m_defaults->objectForKey(folderNumberKey).toInt();
}

QString PageProfiles::folder() const
{
    return QDir(m_root).filePath(QString::number(folderNumber()));
}

void PageProfiles::renew()
{
    m_defaults->setObject((folderNumber() + 1) % folderNumbers, folderNumberKey);
    m_defaults->synchronize();
    for (Shared *profile : {&m_home, &m_miniProgram, &m_landscape, &m_outLink})
        profile->reset();
}

PageProfiles::Shared PageProfiles::existing(Shared &profile, Make make, const QString &name)
{
    if (profile)
        return profile;
    const auto retireOrDelete = [self = QPointer(this)](WebPageProfile *unused) {
        if (self)
            self->retire(unused);
        else
            delete unused;
    };
    profile.reset(make(folder() + u'/' + name, m_storage).release(), retireOrDelete);
    Q_EMIT made(profile->engineProfile());
    return profile;
}

// The engine's views go in the next turn of the event loop, and the profile after them.
void PageProfiles::retire(WebPageProfile *profile)
{
    m_unused.emplace_back(profile);
    QMetaObject::invokeMethod(this, &PageProfiles::dropUnused, Qt::QueuedConnection);
}

void PageProfiles::dropUnused()
{
    m_unused.clear();
    m_mainQueue->after(engineSettles, this, [this] { removeFormerFolders(); });
}

void PageProfiles::removeFormerFolders()
{
    const QDir root(m_root);
    for (const QString &name :
        root.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks)) {
        if (root.filePath(name) != folder())
            removeBeside(root.filePath(name));
    }
}

PageProfiles::Shared PageProfiles::home()
{
    return existing(m_home, makeHomePageProfile, u"home"_s);
}

PageProfiles::Shared PageProfiles::miniProgram()
{
    return existing(m_miniProgram, SecondaryPageProfiles::miniProgram, u"miniprogram"_s);
}

PageProfiles::Shared PageProfiles::landscape()
{
    return existing(m_landscape, SecondaryPageProfiles::landscape, u"landscape"_s);
}

PageProfiles::Shared PageProfiles::outLink()
{
    return existing(m_outLink, SecondaryPageProfiles::outLink, u"outlink"_s);
}
