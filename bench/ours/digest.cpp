// bench_digest FILE: its MD5, as md5sum prints it.

#include "upload/protocol/OMFileStreamSeparation.h"

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 2)
        qFatal("usage: bench_digest FILE");
    const QString path = QString::fromLocal8Bit(argv[1]);
    const QString digest = OMFileStreamSeparation::fileKeyMD5WithPath(path);
    std::printf("%s  %s\n", qUtf8Printable(digest), argv[1]);
    return digest.isNull() ? EXIT_FAILURE : EXIT_SUCCESS;
}
