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
    //! False for the id of one of the last messages; a message without an id is always new.
    bool isNew(const QString &messageId);

private:
    UserDefaults m_file;
};
