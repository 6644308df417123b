// The grid of the screens: a view over typed rows. Cells, colours and edits come from the rows;
// the current row follows its row through sorting; clicks, drags and key moves are reported
// counted from 1. A table written out as a CSV file.
#include "platform/CsvText.h"
#include "platform/Failure.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTableView>
#include <QtTest>

namespace {

struct Person {
    QString name;
    int family = 0;
    bool changed = false;
};

const QStringList Families{QStringLiteral("代表"), QStringLiteral("家族"), QStringLiteral("個人")};

RowModel<Person>* people(QObject* parent) {
    auto* model = new RowModel<Person>(
        {{QStringLiteral("氏 名"),
          [](const Person& p) {
              return p.name;
          }},
         {QStringLiteral("家族"), [](const Person& p) { return Families.value(p.family); },
          Qt::AlignLeft | Qt::AlignVCenter,
          [](const Person& p) { return QString::number(p.family); },
          [](Person& p, const QString& index) {
              p.family = index.toInt();
              p.changed = true;
          },
          Families}},
        parent);
    model->background = [](const Person& p) {
        return p.changed ? QColor(255, 255, 128) : QColor();
    };
    model->setRows({{QStringLiteral("すずき"), 0},
                    {QStringLiteral("あべ"), 2},
                    {QStringLiteral("かとう"), 1},
                    {QStringLiteral("あべ"), 1},
                    {QStringLiteral("いとう"), 0}});
    return model;
}

QPoint cellCentre(const GridView& grid, int row, int col) {
    return grid.view()->visualRect(grid.gridModel()->index(row - 1, col - 1)).center();
}

QString names(const RowModel<Person>& model) {
    QStringList all;
    for (const Person& p : model.rows())
        all << p.name + QString::number(p.family);
    return all.join(QLatin1Char(','));
}

} // namespace

class TestGrid : public QObject {
    Q_OBJECT

private slots:
    // Cells, colours and drop-down edits come from the rows; the current row follows its row
    // through a sort.
    void cellsColoursEditsAndSorting() {
        GridView grid;
        RowModel<Person>* model = people(&grid);
        grid.setModel(model);
        grid.resize(400, 240);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QCOMPARE(model->index(1, 1).data().toString(), QStringLiteral("個人"));
        QVERIFY(!model->index(1, 0).data(Qt::BackgroundRole).isValid()); // the grid's default
        QVERIFY(!(model->flags(model->index(1, 0)) & Qt::ItemIsEditable));

        const QModelIndex cell = model->index(1, 1);
        grid.view()->setCurrentIndex(cell);
        grid.view()->edit(cell);
        auto* combo = grid.view()->findChild<QComboBox*>();
        QVERIFY(combo);
        QCOMPARE(combo->currentText(), QStringLiteral("個人"));
        combo->setCurrentIndex(0);
        grid.view()->setCurrentIndex(model->index(1, 0)); // leaving the cell commits
        QCOMPARE(model->at(1).family, 0);
        QVERIFY(model->at(1).changed);
        QCOMPARE(model->index(1, 0).data(Qt::BackgroundRole).value<QColor>(),
                 QColor(255, 255, 128));

        grid.setRowSelection();
        grid.setActiveCell(3, 1); // かとう
        QSignalSpy moved(&grid, &GridView::currentRowChanged);
        model->sortRows([](const Person& a, const Person& b) { return a.name < b.name; });
        // Equal names keep their order.
        QCOMPARE(names(*model), QStringLiteral("あべ0,あべ1,いとう0,かとう1,すずき0"));
        QCOMPARE(grid.activeRow(), 4);
        QCOMPARE(model->at(grid.activeRow() - 1).name, QStringLiteral("かとう"));
        grid.setActiveCell(2, 1);
        QCOMPARE(moved.last(), (QList<QVariant>{2}));
        model->removeAt(0);
        model->clear();
        QCOMPARE(grid.activeRow(), 0);
    }

    void clicksKeysAndBlocksAreReportedCountedFromOne() {
        GridView grid;
        grid.setModel(people(&grid));
        grid.resize(500, 300);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QCOMPARE(grid.activeRow(), 1); // the first row until another is chosen

        QSignalSpy clicked(&grid, &GridView::clicked);
        QSignalSpy doubleClicked(&grid, &GridView::doubleClicked);
        QSignalSpy block(&grid, &GridView::blockSelected);
        QSignalSpy moved(&grid, &GridView::currentRowChanged);
        QWidget* cells = grid.view()->viewport();
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 3, 2));
        QCOMPARE(clicked.last(), (QList<QVariant>{3, 2}));
        QCOMPARE(moved.last(), (QList<QVariant>{3}));
        QCOMPARE(grid.activeCol(), 2);
        QTest::keyClick(grid.view(), Qt::Key_Down);
        QCOMPARE(moved.last(), (QList<QVariant>{4}));
        QCOMPARE(block.count(), 0);

        // A real double-click: a click, then the second press arrives as a double-click.
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 4, 1));
        QTest::mouseDClick(cells, Qt::LeftButton, {}, cellCentre(grid, 4, 1));
        QCOMPARE(doubleClicked.last(), (QList<QVariant>{4, 1}));

        QHeaderView* header = grid.view()->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(1) + 5, 5));
        QCOMPARE(clicked.last(), (QList<QVariant>{0, 2}));

        // Shift-click selects the block from the current cell.
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 4, 1));
        QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, cellCentre(grid, 5, 2));
        QCOMPARE(block.count(), 1);
        QCOMPARE(block.last(), (QList<QVariant>{4, 1, 5, 2}));

        // A drag over the cells or the row headings is a block, told once; a click inside the
        // block shown and a click on a row heading are none.
        QWidget* headings = grid.view()->verticalHeader()->viewport();
        const auto heading = [&](int row) {
            return QPoint(5, grid.view()->verticalHeader()->sectionViewportPosition(row - 1) + 5);
        };
        QTest::mousePress(cells, Qt::LeftButton, {}, cellCentre(grid, 1, 1));
        QTest::mouseMove(cells, cellCentre(grid, 3, 2));
        QTest::mouseRelease(cells, Qt::LeftButton, {}, cellCentre(grid, 3, 2));
        QCOMPARE(block.count(), 2);
        QCOMPARE(block.last(), (QList<QVariant>{1, 1, 3, 2}));
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 2, 1));
        QTest::mouseClick(headings, Qt::LeftButton, {}, heading(4));
        QCOMPARE(block.count(), 2);
        QTest::mousePress(headings, Qt::LeftButton, {}, heading(2));
        QTest::mouseMove(headings, heading(3));
        QTest::mouseRelease(headings, Qt::LeftButton, {}, heading(3));
        QCOMPARE(block.count(), 3);
        QCOMPARE(block.last(), (QList<QVariant>{2, 1, 3, 2}));
    }

    // The exact bytes of records: quoted only for a comma, a double quote or a line break, the
    // quotes doubled; blanks, kana and empty values as they are.
    void csvRecordsAndFiles() {
        const struct {
            QStringList fields;
            QByteArray bytes;
        } cases[] = {
            {{QStringLiteral("1"), QStringLiteral("青木 太郎"), QStringLiteral("ｱｵｷ")},
             "1,青木 太郎,ｱｵｷ\r\n"},
            {{QStringLiteral("a,b"), QStringLiteral("say \"hi\""), QStringLiteral("\"")},
             "\"a,b\",\"say \"\"hi\"\"\",\"\"\"\"\r\n"},
            {{QStringLiteral("1\r2"), QStringLiteral("3\n4"), QStringLiteral("5\r\n6")},
             "\"1\r2\",\"3\n4\",\"5\r\n6\"\r\n"},
            {{QString(), QStringLiteral("  函館市 "), QString(), QString()}, ",  函館市 ,,\r\n"},
            {{QString()}, "\r\n"},
            {{QStringLiteral("O'Neil;\t"), QStringLiteral("=1+2")}, "O'Neil;\t,=1+2\r\n"},
        };
        for (const auto& c : cases)
            QCOMPARE(CsvRecord(c.fields).toUtf8(), c.bytes);

        // The folder is made; the file appears whole, with the mark, only when committed.
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Export/顧客.csv"));
        const auto bytes = [&] {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
        };
        {
            CsvFile file(path);
            file.write(cases[0].fields);
            QCOMPARE(bytes(), QByteArray("<none>"));
            file.commit();
        }
        QCOMPARE(bytes(), "\xEF\xBB\xBF" + cases[0].bytes);
        {
            CsvFile abandoned(path);
            abandoned.write(cases[1].fields);
        }
        QCOMPARE(bytes(), "\xEF\xBB\xBF" + cases[0].bytes);
        long number = 0;
        try {
            CsvFile(path + QStringLiteral("/below-a-file.csv"));
        } catch (const Failure& failure) {
            number = failure.number();
        }
        QCOMPARE(number, ErrorNumber::FileAccess);
    }
};

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"
