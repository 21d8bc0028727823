#include "launch/guide/UserGuideViewController.h"

#include "launch/guide/GuideSeries.h"
#include "launch/guide/UserGuideAuthorizationTipView.h"
#include "platform/storage/UserDefaults.h"
#include "ui/shell/Shell.h"

#include <QPointer>
#include <QUrl>

using namespace Qt::StringLiterals;

UserGuideViewController::UserGuideViewController(
    const LaunchEnvironment &environment, const QSize &screenPixels)
    : m_environment(environment)
    , m_series(GuideSeries::forScreen(screenPixels))
{
}

bool UserGuideViewController::shouldShowWelcomeViewController(const UserDefaults &defaults)
{
    return !UserGuideAuthorizationTipView::isAccepted(defaults);
}

QVariantList UserGuideViewController::pages() const
{
    const auto page
        = [this](int number, const QString &heading, const QString &text, const QString &color) {
              return QVariantMap {{u"picture"_s, GuideSeries::picture(m_series, number)},
                  {u"heading"_s, heading}, {u"text"_s, text}, {u"color"_s, color}};
          };
    return {
        page(1, u"欢迎使用%1"_s.arg(m_environment.displayName),
            u"学校、老师和家人，一起陪伴每一步成长"_s, u"#e6f9ef"_s),
        page(2, u"校园生活，尽在掌握"_s, u"通知、作业、课表和成绩，打开门户就能看到"_s,
            u"#e8f3fe"_s),
        page(3, u"记录与分享，随手完成"_s, u"拍照上传、扫码签到，精彩瞬间随手留存"_s, u"#fff5e2"_s),
    };
}

void UserGuideViewController::show()
{
    Navigator *navigator = m_environment.shell->navigator();
    const QString name = u"UserGuideScreen"_s;
    navigator->registerScreen(name, QUrl(u"qrc:/qt/qml/Vant/Launch/UserGuideScreen.qml"_s));
    navigator->present(name, this);
}

void UserGuideViewController::leave()
{
    if (!shouldShowWelcomeViewController(*m_environment.defaults))
        return dismiss();
    auto *tip = new UserGuideAuthorizationTipView(m_environment);
    connect(tip, &UserGuideAuthorizationTipView::accepted, this, &UserGuideViewController::dismiss);
    tip->show();
}

void UserGuideViewController::dismiss()
{
    m_environment.shell->navigator()->dismiss(this);
}
