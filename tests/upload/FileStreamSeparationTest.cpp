#include "upload/OMFileStreamSeparation.h"

#include "model/DictionaryMapper.h"
#include "platform/PrivateFile.h"

#include <QCborMap>
#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <numeric>

using namespace Qt::StringLiterals;

class FileStreamSeparationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cutsAtTheBorders();
    void countsTheProgress();
    void comesBackFromTheArchive();
    void readsNoArchiveFromOtherFiles();
    void opensForWriting();
    void takesTheSettingsOfThePage();

private:
    QString file(const QByteArray &content) const
    {
        const QString path = m_folder.filePath(u"clip.mp4"_s);
        return PrivateFile::write(path, content) ? path : QString();
    }
    static auto read(const QString &path)
    {
        SlicingUploadConfig config;
        config.chunkSize = 1024 * 1024;
        return OMFileStreamSeparation::initFileOperationAtPath(path, true, config);
    }

    QTemporaryDir m_folder;
};

void FileStreamSeparationTest::cutsAtTheBorders()
{
    for (const QList<int> &sizes :
        {QList<int> {}, {1}, {524288}, {524288, 1}, {524288, 524288, 1}}) {
        QByteArray content(std::accumulate(sizes.cbegin(), sizes.cend(), 0), 'x');
        for (int i = 0; i < content.size(); i += 1000)
            content[i] = char(i / 1000);
        const auto streamer = read(file(content));
        QCOMPARE(streamer->md5String.toLatin1(),
            QCryptographicHash::hash(content, QCryptographicHash::Md5).toHex());
        QList<int> cut;
        QByteArray joined;
        QSet<QString> ids;
        for (const OMStreamFragment &fragment : streamer->streamFragments) {
            QCOMPARE(fragment.fragementOffset, quint64(joined.size()));
            QVERIFY(!fragment.fragmentStatus);
            QVERIFY(QRegularExpression(u"^[0-9a-f]{40}$"_s).match(fragment.fragmentId).hasMatch());
            cut << int(fragment.fragmentSize);
            ids << fragment.fragmentId;
            joined += streamer->readDateOfFragment(fragment);
        }
        QCOMPARE(cut, sizes);
        QCOMPARE(ids.size(), sizes.size());
        QVERIFY(joined == content);
    }
}

void FileStreamSeparationTest::countsTheProgress()
{
    constexpr quint64 length = OMFileStreamSeparation::fragmentLength;
    const struct
    {
        QList<bool> statuses;
        double rate;
        quint64 bytes;
    } rows[] {
        {{}, 0.5, 7},
        {{false, false, false}, 1.0 / 3, length},
        {{true, false, true}, 2.0 / 3, 2 * length},
        {{true, true, false}, 1, 3 * length - 5},
        {{false}, 1, length - 5},
    };
    for (const auto &row : rows) {
        OMFileStreamSeparation streamer;
        streamer.fileSize = quint64(row.statuses.size()) * length - 5;
        streamer.progressRate = 0.5;
        streamer.uploadDateSize = 7;
        for (const bool status : row.statuses)
            streamer.streamFragments.append({status, {}, 1, 0});
        streamer.setFileStatus(4);
        QCOMPARE(streamer.fileStatus(), 4);
        QCOMPARE(streamer.progressRate, row.rate);
        QCOMPARE(streamer.uploadDateSize, row.bytes);
    }
}

void FileStreamSeparationTest::comesBackFromTheArchive()
{
    const auto streamer = read(file(QByteArray(1'048'577, 'x')));
    streamer->streamFragments[0].fragmentStatus = true;
    streamer->setFileStatus(2);
    // Not what the fragments come to: what was archived must stand.
    streamer->progressRate = 0.125;
    streamer->uploadDateSize = 99;
    const QString path = m_folder.filePath(u"kept/archive"_s);
    OMFileStreamSeparation::archerTheDictionary(*streamer, path);

    const auto restored = OMFileStreamSeparation::unArcherThePlist(path);
    QVERIFY(restored);
    QCOMPARE(restored->progressRate, 0.125);
    QCOMPARE(restored->uploadDateSize, quint64(99));
    QCOMPARE(restored->fileStatus(), 2);
    QCOMPARE(restored->fileSize, quint64(1'048'577));
    const auto texts = [](const OMFileStreamSeparation &of) {
        return QStringList {of.fileName, of.filePath, of.md5String, of.bizId};
    };
    QCOMPARE(texts(*restored), texts(*streamer));
    QCOMPARE(restored->streamFragments, streamer->streamFragments);
    QCOMPARE(restored->readDateOfFragment(restored->streamFragments[2]), "x");

    const QCborMap map = QCborValue::fromCbor(PrivateFile::read(path).value()).toMap();
    const auto names = [](const QCborMap &of) {
        QStringList names;
        for (const QCborValue &key : of.keys())
            names << key.toString();
        return names.join(u' ');
    };
    QCOMPARE(names(map),
        u"fileName fileSize fileStatus filePath md5String streamFragments bizId uploadDateSize progressRate"_s);
    QCOMPARE(names(map[u"streamFragments"_s].toArray()[0].toMap()),
        u"fragmentId fragmentSize fragementOffset fragmentStatus"_s);
}

void FileStreamSeparationTest::readsNoArchiveFromOtherFiles()
{
    const QByteArray whole = QCborMap {{u"fileName"_s, u"x"_s}}.toCborValue().toCbor();
    QVERIFY(OMFileStreamSeparation::unArcherThePlist(file(whole)));
    for (const QByteArray &other : {""_ba, "{\"fileName\": 1}"_ba, whole.chopped(1)})
        QVERIFY2(!OMFileStreamSeparation::unArcherThePlist(file(other)), other);
    QVERIFY(!OMFileStreamSeparation::unArcherThePlist(m_folder.filePath(u"none"_s)));
}

void FileStreamSeparationTest::opensForWriting()
{
    const QString path = m_folder.filePath(u"new"_s);
    QVERIFY(!read(path));
    for (const QByteArray text : {"abc", "d"}) {
        const auto streamer = OMFileStreamSeparation::initFileOperationAtPath(path, false, {});
        streamer->seekToEndOfFile();
        streamer->writeData(text);
    }
    QCOMPARE(read(path)->readDataToEndOfFile(), "abcd");
}

void FileStreamSeparationTest::takesTheSettingsOfThePage()
{
    const QByteArray page = R"({"siteURl": "http://h/", "upload_server": 7, "isVideoSelect": "1",
        "fileNumLimit": "9", "maxFileSingleSizeLimit": "5242880.5", "chunkSize": "nan",
        "column_key": null, "themeColor": ["#fff"], "siteUrl": "http://other/"})";
    const auto config
        = DictionaryMapper::model<SlicingUploadConfig>(QJsonDocument::fromJson(page).object());
    SlicingUploadConfig expected;
    expected.siteURl = u"http://h/"_s;
    expected.upload_server = u"7"_s;
    expected.isVideoSelect = true;
    expected.fileNumLimit = 9;
    expected.maxFileSingleSizeLimit = 5242880.5;
    QCOMPARE(config, expected);
}

QTEST_GUILESS_MAIN(FileStreamSeparationTest)
#include "FileStreamSeparationTest.moc"
