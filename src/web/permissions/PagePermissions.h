#pragma once

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <qqmlregistration.h>

#include <functional>
#include <optional>

class QUrl;
class UserDefaults;

//! What the user has let pages do with the device, or refused, by origin. Kept with the settings
//! until it is taken back, or another user signs in. Owned by the application.
class PagePermissions : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("One for the process.")

public:
    enum class Matter { Camera, Microphone, Position, Notifications };
    Q_ENUM(Matter)

    struct Answer
    {
        QString origin; //!< "https://host.example:8443"
        Matter matter;
        bool allowed;

        bool operator==(const Answer &) const = default;
    };

    //! \a isSignedIn: before somebody has agreed and signed in, no page may ask for anything.
    PagePermissions(UserDefaults *defaults, std::function<bool()> isSignedIn);

    //! Whether the user may be asked for a page of this origin: one whose answers nobody on the way
    //! has written.
    bool mayAsk(const QUrl &origin) const;
    //! What the user has said; none: nothing yet.
    std::optional<bool> answer(const QUrl &origin, Matter matter) const;
    void remember(const QUrl &origin, Matter matter, bool allowed);

    //! All of them, by origin.
    QList<Answer> answers() const;
    //! As if the user had never been asked.
    void takeBack(const QString &origin, Matter matter);
    void clear();

Q_SIGNALS:
    //! A page that is shown may hold what was granted.
    void takenBack(const QUrl &origin, PagePermissions::Matter matter);

private:
    QJsonObject stored() const;
    void store(const QJsonObject &origins);

    UserDefaults *m_defaults;
    std::function<bool()> m_isSignedIn;
};
