#pragma once

#include <QString>

class QJsonObject;

//! Whether a login is refused to accounts of the type that may not use this edition.
enum class UserCheck { No, Yes };

//! Whether that check refuses the user whom a login answer names.
bool refuses(UserCheck check, const QJsonObject &answer);
//! What the user is told then.
QString refusalText();
