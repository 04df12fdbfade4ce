// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// docs/example-server, the server that was written from docs/protocol.md: a till of the built
// programs sells and returns with it, and the books of both are equal.

#include "tests/support/shop.h"
#include "tests/support/tillsettings.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

const QString serverFile = QStringLiteral(ORVA_SOURCE_FOLDER "/docs/example-server/server.py");
const QString vectorsFile = QStringLiteral(ORVA_SOURCE_FOLDER "/protocol/vectors/booking.json");

/// Three pieces and a part of a kilogram, paid with points in part.
constexpr QLatin1StringView saleOfThree(R"(
type = "sale"
card = "2200000000017"
[[line]]
code = "2001"
name = "Кофе <молотый> & зёрна"
price = 333.33
quantity = 3
minPrice = 320.00
[[line]]
code = "2002"
name = "Сыр"
price = 899.99
quantity = 0.765
unit = "kg"
)");

class ExampleServer : public ShopFolder
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(scene.isValid());
        writeFile(u"sale.toml"_s, saleOfThree);
        start(0);
    }

    /// Without any package beside the standard library, and without the environment's settings.
    static QStringList python(const QStringList& arguments)
    {
        return QStringList{u"-I"_s, u"-S"_s, u"-B"_s, serverFile} + arguments;
    }

    void start(int port)
    {
        // its log goes to a file: nobody reads a pipe until the test has ended
        const QStringList arguments =
            python({u"--port"_s, QString::number(port), u"--database"_s, u"server.sqlite"_s});
        server =
            std::make_unique<Program>(u"/bin/sh"_s,
                                      QStringList{u"-c"_s, u"exec \"$0\" \"$@\" 2>server.log"_s,
                                                  QStringLiteral(ORVA_PYTHON)} +
                                          arguments,
                                      folder());
        tests::TillSettings settings;
        settings.server = server->waitForLine(u"Listening on "_s);
        ASSERT_FALSE(settings.server.isEmpty());
        settings.plugin = QStringLiteral(ORVA_PLUGIN);
        writeFile(u"orva.toml"_s, settings.toml());
    }

    QString returnOf(const QString& lines)
    {
        writeFile(u"return.toml"_s, u"type = \"return\"\nsale = \"1\"\n"_s + lines);
        return done({u"return"_s, u"return.toml"_s, u"--wait"_s, u"60"_s});
    }

    QStringList booksOfServer()
    {
        const RunResult run =
            runProgram(QStringLiteral(ORVA_PYTHON),
                       python({u"--books"_s, u"--database"_s, u"server.sqlite"_s}), folder());
        EXPECT_EQ(run.exitCode, 0) << qPrintable(run.output);
        // the till shows of a card its last four digits
        return sorted(QString(run.output).replace(u"220000000"_s, u"****"_s));
    }

    static QStringList sorted(const QString& rows)
    {
        QStringList lines = rows.split(u'\n', Qt::SkipEmptyParts);
        lines.sort();
        return lines;
    }

    /// The sum of a column of the books, in kopecks.
    static qint64 sumOf(const QStringList& books, int column)
    {
        qint64 sum = 0;
        for (const QString& row : books) {
            sum += row.section(u',', column, column).remove(u'.').toLongLong();
        }
        return sum;
    }
};

} // namespace

TEST_F(ExampleServer, booksWhatTheTillPrints)
{
    const QString slip =
        done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"123.45"_s, u"--wait"_s, u"60"_s});
    EXPECT_TRUE(slip.contains(u"Анна Соколова"_s)) << qPrintable(slip);
    done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s, u"--wait"_s, u"60"_s});
    done({u"sell"_s, u"sale.toml"_s, u"--wait"_s, u"60"_s});

    const QStringList books = booksOfServer();
    EXPECT_EQ(books, sorted(tillBooks()));
    ASSERT_EQ(books.size(), 4);
    EXPECT_GT(sumOf(books, 2), 0);
    EXPECT_GT(sumOf(books, 3), 50'000); // more than the card had at first: earned points too
}

TEST_F(ExampleServer, takesASaleBackInPartsToTheLastKopeck)
{
    done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"123.45"_s, u"--wait"_s, u"60"_s});
    const QString piece = u"[[line]]\nposition = 1\nquantity = 1\n"_s;
    returnOf(piece);
    returnOf(piece + u"[[line]]\nposition = 2\nquantity = 0.001\n"_s);
    returnOf(u"[[line]]\nposition = 2\nquantity = 0.333\n"_s);
    returnOf(piece + u"[[line]]\nposition = 2\nquantity = 0.431\n"_s);

    const QStringList books = booksOfServer();
    EXPECT_EQ(books, sorted(tillBooks()));
    ASSERT_EQ(books.size(), 6);
    EXPECT_EQ(sumOf(books, 3), 12'345);
    EXPECT_EQ(sumOf(books, 4), 12'345);
    EXPECT_GT(sumOf(books, 2), 0);
    EXPECT_EQ(sumOf(books, 2), sumOf(books, 5));
}

TEST_F(ExampleServer, hasItsBooksAfterItWasKilled)
{
    done({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"100"_s, u"--wait"_s, u"60"_s});
    const QStringList before = booksOfServer();
    ASSERT_EQ(before.size(), 2);
    server->kill();
    start(0);
    EXPECT_EQ(booksOfServer(), before);
    returnOf(u"[[line]]\nposition = 1\nquantity = 3\n"_s);
    EXPECT_EQ(booksOfServer().size(), 3);
    EXPECT_EQ(booksOfServer(), sorted(tillBooks()));
}

TEST_F(ExampleServer, holdsEveryRequirementThatARunCanTry)
{
    const QString settings = readFile(u"orva.toml"_s);
    const QString address = settings.section(u"serverUrl = \""_s, 1).section(u'"', 0, 0);
    writeFile(u"orva.toml"_s,
              settings + u"[verify]\ntestServer = \"%1\"\ncard = \"2200000000017\"\n"
                         "secondCard = \"2200000000024\"\nemptyCard = \"2200000000031\"\n"
                         "goods = \"2001,2002\"\n"_s.arg(address));
    Program run(QStringLiteral(ORVA_TILL),
                {u"verify"_s, address, u"--strict"_s, u"--json"_s, u"--quiet"_s, u"--junit"_s,
                 u"run.xml"_s},
                folder());
    int exitCode = -1;
    for (int waits = 0; waits < 4 && exitCode == -1; ++waits) { // it takes twenty seconds by itself
        exitCode = run.waitForEnd();
    }
    EXPECT_EQ(exitCode, 0) << qPrintable(run.output());
    const QJsonObject result = QJsonDocument::fromJson(run.output().toUtf8()).object();
    QStringList notHeld;
    for (const QJsonValue requirement : result.value(u"requirements"_s).toArray()) {
        if (requirement[u"state"_s] != u"held"_s) {
            notHeld.append(requirement[u"name"_s].toString());
        }
    }
    // what no run can bring about, and TLS, which the example leaves to others
    EXPECT_EQ(notHeld, (QStringList{u"tls"_s, u"passing-trouble"_s, u"retry-after"_s,
                                    u"booked-is-durable"_s, u"late-confirmation"_s}));
    EXPECT_GE(result.value(u"requirements"_s).toArray().size(), 60);
    EXPECT_EQ(result.value(u"leftBehind"_s).toArray(), QJsonArray());
    const QString junit = readFile(u"run.xml"_s);
    EXPECT_GE(junit.count(u"<testcase "_s), 60) << qPrintable(junit.left(500));
    EXPECT_EQ(junit.count(u"<failure "_s), 0) << qPrintable(junit);
}

TEST_F(ExampleServer, holdsItsArithmeticAgainstTheVectors)
{
    const RunResult sound =
        runProgram(QStringLiteral(ORVA_PYTHON), python({u"--vectors"_s, vectorsFile}), folder());
    EXPECT_EQ(sound.exitCode, 0) << qPrintable(sound.output);

    QFile file(vectorsFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QJsonObject vectors = QJsonDocument::fromJson(file.readAll()).object();
    QJsonArray sales = vectors.value(u"sales"_s).toArray();
    QJsonObject first = sales.first().toObject();
    first.insert(u"earned"_s, QJsonArray{1149, 280, 0});
    sales.replace(0, first);
    vectors.insert(u"sales"_s, sales);
    writeFile(u"wrong.json"_s, QString::fromUtf8(QJsonDocument(vectors).toJson()));
    const RunResult wrong = runProgram(QStringLiteral(ORVA_PYTHON),
                                       python({u"--vectors"_s, u"wrong.json"_s}), folder());
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_TRUE(wrong.output.contains(u"wrong: "_s + first.value(u"name"_s).toString()))
        << qPrintable(wrong.output);
}

TEST(ExampleServerText, isShortEnoughToBeRead)
{
    QFile file(serverFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    EXPECT_LE(lines.size(), 301); // behind the last line's end nothing follows
    for (const QByteArray& line : lines) {
        EXPECT_LE(QString::fromUtf8(line).size(), 120) << line.constData();
    }
}
