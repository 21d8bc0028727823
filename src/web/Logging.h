#pragma once

#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcWeb)
//! The pages' own consoles.
Q_DECLARE_LOGGING_CATEGORY(lcWebPage)
