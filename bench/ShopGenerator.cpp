#include "ShopGenerator.h"

#include "platform/Format.h"
#include "platform/db/Connection.h"
#include "platform/db/SqlText.h"
#include "platform/db/Transaction.h"

#include <QDate>
#include <QStringList>
#include <random>

namespace {

struct Name {
    const char* kanji;
    const char* kana;
};

// Common family and given names, most frequent first: drawn with a Zipf-like spread.
constexpr Name FamilyNames[] = {
    {"佐藤", "さとう"},     {"鈴木", "すずき"},   {"高橋", "たかはし"}, {"田中", "たなか"},
    {"伊藤", "いとう"},     {"渡辺", "わたなべ"}, {"山本", "やまもと"}, {"中村", "なかむら"},
    {"小林", "こばやし"},   {"加藤", "かとう"},   {"吉田", "よしだ"},   {"山田", "やまだ"},
    {"佐々木", "ささき"},   {"山口", "やまぐち"}, {"松本", "まつもと"}, {"井上", "いのうえ"},
    {"木村", "きむら"},     {"林", "はやし"},     {"斎藤", "さいとう"}, {"清水", "しみず"},
    {"山崎", "やまざき"},   {"森", "もり"},       {"池田", "いけだ"},   {"橋本", "はしもと"},
    {"阿部", "あべ"},       {"石川", "いしかわ"}, {"山下", "やました"}, {"中島", "なかじま"},
    {"石井", "いしい"},     {"小川", "おがわ"},   {"前田", "まえだ"},   {"岡田", "おかだ"},
    {"長谷川", "はせがわ"}, {"藤田", "ふじた"},   {"後藤", "ごとう"},   {"近藤", "こんどう"},
    {"村上", "むらかみ"},   {"遠藤", "えんどう"}, {"青木", "あおき"},   {"坂本", "さかもと"},
    {"斉藤", "さいとう"},   {"福田", "ふくだ"},   {"太田", "おおた"},   {"西村", "にしむら"},
    {"藤井", "ふじい"},     {"金子", "かねこ"},   {"岡本", "おかもと"}, {"藤原", "ふじわら"},
    {"中野", "なかの"},     {"三浦", "みうら"},   {"原田", "はらだ"},   {"中川", "なかがわ"},
    {"松田", "まつだ"},     {"竹内", "たけうち"}, {"小野", "おの"},     {"田村", "たむら"},
    {"中山", "なかやま"},   {"和田", "わだ"},     {"石田", "いしだ"},   {"森田", "もりた"}};

constexpr Name GivenNames[] = {
    {"太郎", "たろう"}, {"花子", "はなこ"},   {"一郎", "いちろう"}, {"次郎", "じろう"},
    {"健", "けん"},     {"誠", "まこと"},     {"大輔", "だいすけ"}, {"翔太", "しょうた"},
    {"拓也", "たくや"}, {"直樹", "なおき"},   {"和子", "かずこ"},   {"幸子", "さちこ"},
    {"恵子", "けいこ"}, {"美咲", "みさき"},   {"陽子", "ようこ"},   {"裕子", "ゆうこ"},
    {"明美", "あけみ"}, {"真由美", "まゆみ"}, {"浩", "ひろし"},     {"茂", "しげる"},
    {"勇", "いさむ"},   {"清", "きよし"},     {"博", "ひろし"},     {"隆", "たかし"},
    {"修", "おさむ"},   {"正", "ただし"},     {"蓮", "れん"},       {"陽翔", "はると"},
    {"結衣", "ゆい"},   {"葵", "あおい"},     {"さくら", "さくら"}, {"優花", "ゆうか"},
    {"由美", "ゆみ"},   {"智子", "ともこ"},   {"久美子", "くみこ"}, {"典子", "のりこ"},
    {"聡", "さとし"},   {"徹", "とおる"},     {"剛", "つよし"},     {"稔", "みのる"}};

template <class T, size_t N> const T& zipf(const T (&items)[N], std::mt19937& random) {
    // Weight 1/(rank+1): a few names are very common, many are rare.
    static std::discrete_distribution<size_t> pick = [] {
        std::vector<double> weights;
        for (size_t i = 0; i < N; ++i)
            weights.push_back(1.0 / double(i + 1));
        return std::discrete_distribution<size_t>(weights.begin(), weights.end());
    }();
    return items[pick(random)];
}

struct Address {
    QString yubin, jusyo1;
};

QList<Address> addressesOf(Connection& connection) {
    QList<Address> addresses;
    RecordSet rows =
        connection.execute(QStringLiteral("select ZIP1, ZIP2, CITY, TOWN from ZipList"));
    for (; !rows.eof(); rows.moveNext())
        addresses.append({QStringLiteral("%1-%2")
                              .arg(rows.field(0).toInt(), 3, 10, QLatin1Char('0'))
                              .arg(rows.field(1).toInt(), 4, 10, QLatin1Char('0')),
                          rows.field(2).toString() + rows.field(3).toString()});
    if (addresses.isEmpty())
        addresses.append({QStringLiteral("060-0042"), QStringLiteral("札幌市中央区大通西")});
    return addresses;
}

class BatchInsert {
public:
    BatchInsert(Connection& connection, QString table)
        : connection_(connection), table_(std::move(table)) {}
    ~BatchInsert() { flush(); }
    void add(const QStringList& values) {
        rows_ << QLatin1Char('(') + values.join(QLatin1Char(',')) + QLatin1Char(')');
        if (rows_.size() == 200)
            flush();
    }
    void flush() {
        if (rows_.isEmpty())
            return;
        connection_.execute(QStringLiteral("insert into ") + table_ + QStringLiteral(" values ") +
                            rows_.join(QLatin1Char(',')));
        rows_.clear();
    }

private:
    Connection& connection_;
    QString table_;
    QStringList rows_;
};

QString code(int number) {
    return SqlQuote(QStringLiteral("%1").arg(number, 3, 10, QLatin1Char('0')));
}

QString step(std::mt19937& random, double low, double high, double by) {
    const int steps = int((high - low) / by);
    return PlainDecimal(low + by * std::uniform_int_distribution<int>(0, steps)(random));
}

constexpr int OpenOrders = 2000, HandedOverOrders = 2000;

// An order's statuses from the order taken, one a day at ten.
void addSteps(BatchInsert& log, const QString& key, const QDate& taken, int status) {
    const QList<int> steps =
        status == 7 ? QList<int>{7} : QList<int>{0, 1, 2, 3, 4, 5}.mid(0, status + 1);
    for (int no = 0; no < steps.size(); ++no)
        log.add({key, SqlNum(no + 1), SqlNum(steps[no]),
                 SqlQuote(taken.addDays(no).toString(QStringLiteral("yyyy/MM/dd")) +
                          QStringLiteral(" 10:00:00"))});
}

// Orders for the latest purchases: the newest open at the statuses of the work (half of them
// with a deposit of a third), those before them handed over and paid in full. Drawn from a
// random stream of their own, so the customers and purchases stay those of the seed.
void addOrders(Connection& connection, unsigned seed, GeneratedShop& shop) {
    std::mt19937 random(seed + 1);
    const auto uniform = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    std::discrete_distribution<int> openStatus({15, 30, 15, 15, 20, 0, 0, 5});
    RecordSet latest = connection.execute(
        QStringLiteral("select Uri_UserNo, Uri_Seq, Uri_Date, Uri_KingaKei from San_Uriage order "
                       "by Uri_Date desc, Uri_UserNo desc, Uri_Seq desc limit %1")
            .arg(OpenOrders + HandedOverOrders));
    BatchInsert orders(connection, QStringLiteral("San_Order"));
    BatchInsert log(connection, QStringLiteral("San_OrderLog"));
    BatchInsert payments(connection, QStringLiteral("San_Payment"));
    for (; !latest.eof(); latest.moveNext()) {
        const QString key = SqlNum(latest.field(0).toLongLong()) + QLatin1Char(',') +
                            SqlNum(latest.field(1).toInt());
        const QDate taken =
            QDate::fromString(latest.field(2).toString(), QStringLiteral("yyyyMMdd"));
        const qint64 total = latest.field(3).toLongLong();
        const bool open = shop.openOrders < OpenOrders;
        const int status = open ? openStatus(random) : 5;
        const QDate due = uniform(0, 19) == 0 ? QDate() : taken.addDays(uniform(7, 14));
        orders.add({key, SqlNum(status),
                    SqlNum(due.isValid() ? due.year() * 10000 + due.month() * 100 + due.day() : 0),
                    QStringLiteral("''"), QStringLiteral("''"), QStringLiteral("''"),
                    SqlNum(status == 7 ? std::max(latest.field(1).toInt() - 1, 0) : 0)});
        addSteps(log, key, taken, status);
        const qint64 paid = open ? (uniform(0, 1) == 0 ? total / 3000 * 1000 : 0) : total;
        if (paid > 0)
            payments.add({key, QStringLiteral("1"), latest.field(2).toString(), SqlNum(paid),
                          SqlNum(uniform(0, 4)), open ? QStringLiteral("0") : QStringLiteral("1")});
        ++shop.orders;
        shop.openOrders += open ? 1 : 0;
    }
}

} // namespace

GeneratedShop GenerateShop(Connection& connection, qint64 customers, unsigned seed) {
    std::mt19937 random(seed);
    const QList<Address> addresses = addressesOf(connection);
    const auto uniform = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    GeneratedShop shop;
    shop.regular = customers / 2;
    Transaction transaction(connection);
    {
        BatchInsert users(connection, QStringLiteral("San_User"));
        BatchInsert sales(connection, QStringLiteral("San_Uriage"));
        QString householdTel;
        int householdLeft = 0;
        for (qint64 no = 1; no <= customers; ++no) {
            const Name& family = zipf(FamilyNames, random);
            const Name& given = GivenNames[uniform(0, int(std::size(GivenNames)) - 1)];
            // Households of two to four share a telephone.
            if (householdLeft == 0) {
                householdTel = QStringLiteral("0%1-%2-%3")
                                   .arg(uniform(11, 999))
                                   .arg(uniform(100, 9999))
                                   .arg(uniform(0, 9999), 4, 10, QLatin1Char('0'));
                householdLeft = uniform(0, 9) < 3 ? uniform(2, 4) : 1;
            }
            const int kazok =
                householdLeft > 1 ? (householdLeft == 2 ? 0 : 1) : (uniform(0, 19) == 0 ? 3 : 2);
            --householdLeft;
            const Address& address = addresses[uniform(0, int(addresses.size()) - 1)];
            const int era = std::discrete_distribution<int>({3, 60, 25, 5})(random);
            const int year = uniform(0, 14) == 0 ? 0
                             : era == 0          ? uniform(1, 15)
                             : era == 1          ? uniform(1, 64)
                             : era == 2          ? uniform(1, 31)
                                                 : uniform(1920, 2020);
            const QDate entry = QDate(2006, 1, 1).addDays(uniform(0, 7600));
            users.add({SqlNum(no),
                       SqlQuote(QString::fromUtf8(family.kanji) + QLatin1Char(' ') +
                                QString::fromUtf8(given.kanji)),
                       SqlQuote(QString::fromUtf8(family.kana) + QLatin1Char(' ') +
                                QString::fromUtf8(given.kana)),
                       SqlQuote(address.yubin),
                       SqlQuote(address.jusyo1),
                       SqlQuote(QStringLiteral("%1-%2-%3")
                                    .arg(uniform(1, 30))
                                    .arg(uniform(1, 20))
                                    .arg(uniform(1, 30))),
                       SqlQuote(householdTel),
                       QStringLiteral("''"),
                       QStringLiteral("''"),
                       QStringLiteral("''"),
                       QStringLiteral("''"),
                       SqlNum(uniform(0, 1)),
                       SqlNum(kazok),
                       SqlNum(era),
                       SqlNum(year),
                       SqlNum(uniform(0, 12)),
                       SqlNum(uniform(1, 28)),
                       SqlQuote(entry.toString(QStringLiteral("yyyy/MM/dd"))),
                       SqlQuote(entry.toString(QStringLiteral("yyyy/MM/dd"))),
                       QStringLiteral("NULL")});
            const int count = no == shop.regular ? 50 : std::poisson_distribution<int>(4.0)(random);
            for (int seq = 1; seq <= count; ++seq) {
                const QDate date = QDate(2006, 11, 22).addDays(uniform(0, 7305));
                const int frame = uniform(5, 60) * 1000;
                const int lens = uniform(0, 50) * 1000;
                QStringList values{SqlNum(no),
                                   SqlNum(seq),
                                   SqlNum(date.year() * 10000 + date.month() * 100 + date.day()),
                                   code(uniform(1, 7)),
                                   code(uniform(1, 9)),
                                   code(uniform(1, 8)),
                                   SqlQuote(QStringLiteral("FR-%1").arg(uniform(100, 9999))),
                                   SqlNum(frame),
                                   SqlQuote(QString::number(uniform(44, 58))),
                                   QStringLiteral("'黒'"),
                                   code(uniform(1, 8)),
                                   SqlQuote(QStringLiteral("LZ-%1").arg(uniform(100, 999))),
                                   SqlNum(lens),
                                   SqlNum(frame + lens)};
                for (int eye = 0; eye < 2; ++eye)
                    values << step(random, -8, 4, 0.25) << step(random, -3, 0, 0.25)
                           << SqlNum(uniform(0, 180)) << step(random, 0, 3, 0.25)
                           << QStringLiteral("0") << QStringLiteral("''") << QStringLiteral("0")
                           << QStringLiteral("''") << SqlNum(uniform(60, 75)) << QStringLiteral("0")
                           << step(random, 28, 36, 0.5) << step(random, 0.1, 1.2, 0.1)
                           << step(random, 0.7, 1.5, 0.1);
                values << QStringLiteral("'遠近'") << QStringLiteral("''") << QStringLiteral("''");
                sales.add(values);
                ++shop.purchases;
            }
            ++shop.customers;
        }
    }
    addOrders(connection, seed, shop);
    transaction.commit();
    return shop;
}
