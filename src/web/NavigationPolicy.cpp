#include "web/NavigationPolicy.h"

#include "model/StringFormat.h"

using namespace Qt::StringLiterals;

NavigationPolicy NavigationPolicy::decide(
    const QUrl &url, TargetFrame target, const QString &customerServiceAccount)
{
    // Anywhere in the address: whatever else it says, the fixed chat opens.
    if (url.toString(QUrl::FullyEncoded).contains(u"mqq")) {
        return {{QUrl(u"mqq://im/chat?chat_type=wpa&uin="_s + customerServiceAccount
                    + u"&version=1&src_type=web"_s)},
            false};
    }
    if (url.scheme() == u"tel") {
        const QString number = url.toString(QUrl::RemoveScheme | QUrl::FullyEncoded);
        // Desktops know the scheme that asks before it dials by the plain name only.
        return {{QUrl(StringFormat::format(u"telprompt:%@"_s, number)),
                    QUrl(StringFormat::format(u"tel:%@"_s, number))},
            false};
    }
    return {{}, target == TargetFrame::None};
}
