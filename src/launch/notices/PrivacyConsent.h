#pragma once

#include <QObject>

#include <functional>

class ShareSDK;
class UserDefaults;

//! Whether the person has agreed to the collection of personal data: asked for by the notices,
//! remembered for good. Owned by the application.
class PrivacyConsent : public QObject
{
    Q_OBJECT

public:
    //! \a terminate ends the process at once, without any of the usual work at its end.
    PrivacyConsent(UserDefaults *defaults, ShareSDK *shareSDK, std::function<void()> terminate);

    bool isGiven() const;
    //! Tells the share service, stores the consent, and then tells everybody else.
    void agree();
    //! The person must not use the program: nothing is stored, so the question comes again.
    void refuse();

Q_SIGNALS:
    void given();

private:
    UserDefaults *m_defaults;
    ShareSDK *m_shareSDK;
    std::function<void()> m_terminate;
};
