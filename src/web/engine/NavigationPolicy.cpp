#include "web/engine/NavigationPolicy.h"

#include "model/StringFormat.h"

using namespace Qt::StringLiterals;

namespace {

// Empty: the address is no link for another program.
QList<QUrl> programsFor(const QUrl &url, const QString &customerServiceAccount)
{
    // Anywhere in the address: whatever else it says, the fixed chat opens.
    if (url.toString(QUrl::FullyEncoded).contains(u"mqq")) {
        return {QUrl(u"mqq://im/chat?chat_type=wpa&uin="_s + customerServiceAccount
            + u"&version=1&src_type=web"_s)};
    }
    if (url.scheme() == u"tel") {
        const QString number = url.toString(QUrl::RemoveScheme | QUrl::FullyEncoded);
        // Desktops know the scheme that asks before it dials by the plain name only.
        return {QUrl(StringFormat::format(u"telprompt:%@"_s, number)),
            QUrl(StringFormat::format(u"tel:%@"_s, number))};
    }
    return {};
}

}

NavigationPolicy NavigationPolicy::decide(
    const QUrl &url, Target target, const QString &customerServiceAccount)
{
    const QList<QUrl> programs = programsFor(url, customerServiceAccount);
    if (!programs.isEmpty()) {
        const bool mayStart = target == Target::MainFrame || target == Target::NewWindow;
        return {mayStart ? programs : QList<QUrl>(), false};
    }
    return {{}, target == Target::NewWindow || target == Target::UnaskedWindow};
}
