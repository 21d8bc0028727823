#pragma once

#include "platform/storage/UserDefaults.h"

//! What the push client remembers from run to run: the id of this device, and which messages it has
//! had. Owned by the push client.
class PushStore
{
public:
    explicit PushStore(const QString &filePath);

    //! Made once: 32 hexadecimal digits that nobody can guess.
    QString clientId();
    //! Remembers a message by its id. False for one of the last that is remembered already; a
    //! message without an id is always new.
    [[nodiscard]] bool remember(const QString &messageId);

private:
    UserDefaults m_file;
};
