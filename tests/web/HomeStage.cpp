#include "web/HomeStage.h"

#include "web/home/STHomeViewControllerDelegate.h"

using namespace Qt::StringLiterals;

HomeStage::HomeStage(
    const DeploymentConfiguration::Hosts &hosts, STHomeViewControllerDelegate *delegate)
    : session(hosts)
    , album(session.net.folder.filePath(u"album"_s))
    , pageHost(&shell, &mainQueue, &linkHandOver, session.net.folder.path())
    , profiles(session.net.folder.filePath(u"web"_s), session.net.cookies, &session.net.defaults,
          &session.mainQueue)
    , delegate(delegate)
    , slicingUpload({
          .network = &session.net.network,
          .reachability = &reachability,
          .photoLibrary = &album,
          .shell = &shell,
          .session = &session.session,
          .backGroundlogin =
              [delegate](const UploadEnvironment::LoggedIn &success) {
                  delegate->backGroundloginInWithRefresh(false, success);
              },
          .albumFolder = {},
          .libraryPath = session.net.folder.path(),
          .exportFolder = session.net.folder.filePath(u"exports"_s),
      })
{
}

HomeEnvironment HomeStage::environment()
{
    return {
        .configuration = {},
        .delegate = delegate,
        .profiles = &profiles,
        .loginModel = &loginModel,
        .defaults = &defaults,
        .session = &session.session,
        .deviceIdentifier = &session.net.student,
        .cookieStorage = session.net.cookies,
        .ssoCookies = &session.cookies,
        .notifications = &notifications,
        .mainQueue = &mainQueue,
        .reachability = &reachability,
        .network = &session.net.network,
        .photoLibrary = &album,
        .wxApi = &wxApi,
        .services = &services,
        .pageHost = &pageHost,
        .slicingUpload = &slicingUpload,
        .shell = &shell,
    };
}
