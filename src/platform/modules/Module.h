#pragma once

#include <QObject>

//! Libraries that the first screen does without lie in modules, which are loaded when they are
//! first needed. A module is linked to them ordinarily and takes nothing from the program but
//! headers.
class Module
{
public:
    //! What a module offers, by its file's name; it stays for the life of the process. Null, and a
    //! warning, where there is none. May be called on any thread, and takes its time.
    template <typename Interface>
    static const Interface *load(const char *name)
    {
        return qobject_cast<const Interface *>(root(name));
    }

private:
    static const QObject *root(const char *name);
};
