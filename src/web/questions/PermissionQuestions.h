#pragma once

#include "web/permissions/PagePermissions.h"

#include <QHash>
#include <QObject>
#include <QUrl>
#include <qqmlregistration.h>

class AlertView;

//! What the pages of one view want of the device: answered as the user has answered before, else by
//! a question, which goes with its document. Owned by PageDialogs.
class PermissionQuestions : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by PageDialogs.")

public:
    //! Both must outlive it.
    PermissionQuestions(AlertView *alertView, PagePermissions *permissions);
    ~PermissionQuestions() override;

    //! A page or a frame of this origin wants all of \a matters for what the engine calls \a
    //! feature. The answer comes as answered(), maybe at once. None of them: it is refused.
    Q_INVOKABLE void ask(const QUrl &origin, int feature, const QList<int> &matters);
    //! A page of this address is shown: the engine is told what was granted before, which it
    //! forgets when the program ends.
    Q_INVOKABLE void pageShown(const QUrl &address);

    void documentGone();

Q_SIGNALS:
    void answered(const QUrl &origin, int feature, bool granted);
    //! Without having been asked. \a matter: of PagePermissions.
    void settled(const QUrl &origin, int matter, bool granted);

private:
    using Matters = QList<PagePermissions::Matter>;
    using Asked = QPair<QUrl, int>;

    void show(const Asked &asked, const Matters &matters);
    void hear(const Asked &asked, const Matters &matters, int button);

    AlertView *m_alertView;
    PagePermissions *m_permissions;
    QHash<Asked, int> m_shown; // the alert's number
    QList<Asked> m_dismissed; // without an answer, by this document's user
};
