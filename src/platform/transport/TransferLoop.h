#pragma once

#include "platform/transport/HTTPTransfer.h"

#include <QObject>

#include <memory>

//! What carries transfers out, all on one thread. Its end ends them all, and nobody is told.
class TransferLoop
{
public:
    TransferLoop() = default;
    virtual ~TransferLoop() = default;
    Q_DISABLE_COPY_MOVE(TransferLoop)

    virtual void add(std::shared_ptr<HTTPTransfer> transfer) = 0;
    //! Unless it has ended already, it ends with HTTPTransfer::cancelled.
    virtual void cancel(const std::shared_ptr<HTTPTransfer> &transfer) = 0;
    //! Goes on with all, and waits until there is more to do.
    virtual void turn() = 0;
    //! Ends the turn that waits, or the next; from any thread.
    virtual void wake() = 0;
};

//! The module that makes them.
class TransferLoops
{
public:
    TransferLoops() = default;
    virtual ~TransferLoops() = default;
    Q_DISABLE_COPY_MOVE(TransferLoops)

    //! \a authorities: certificates (DER) trusted beside the system's.
    virtual std::unique_ptr<TransferLoop> make(const QByteArrayList &authorities) const = 0;
};

Q_DECLARE_INTERFACE(TransferLoops, "cn.vant.student.TransferLoops")
