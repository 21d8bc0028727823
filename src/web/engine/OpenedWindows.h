#pragma once

#include <QList>

#include <optional>

//! Which pages of a view's history another page has opened as a window of its own: it may close
//! itself, and its opener is shown again. Counts in indexes of the history.
class OpenedWindows
{
public:
    //! The page at this index has asked for a window, whose load begins now.
    void asked(int opener) { m_awaited = opener; }
    //! That load has been given up for another.
    void superseded() { m_awaited.reset(); }
    //! The page at this index is shown.
    void shown(int index)
    {
        m_openers.removeIf([index](int opener) { return opener >= index; });
        if (m_awaited && *m_awaited < index)
            m_openers << *m_awaited;
        m_awaited.reset();
    }
    //! Who has opened the window that the page at this index is in.
    std::optional<int> openerOf(int index) const
    {
        if (m_awaited && *m_awaited < index)
            return m_awaited;
        return m_openers.isEmpty() || m_openers.last() >= index ? std::nullopt
                                                                : std::optional(m_openers.last());
    }
    void clear() { *this = {}; }

private:
    std::optional<int> m_awaited;
    QList<int> m_openers; // ascending
};
