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

using namespace Qt::StringLiterals;

namespace {

struct Person {
    QString name;
    int family = 0;
    bool changed = false;
};

const QStringList Families{u"代表"_s, u"家族"_s, u"個人"_s};

// Five people in a grid shown on the screen.
RowModel<Person>* people(GridView& grid) {
    using Column = GridColumn<Person>;
    auto* model = new RowModel<Person>(
        {Column(u"氏 名"_s, [](const Person& p) { return p.name; }),
         Column(
             u"家族"_s, [](const Person& p) { return Families.value(p.family); },
             Qt::AlignLeft | Qt::AlignVCenter,
             [](const Person& p) { return QString::number(p.family); },
             [](Person& p, const QString& index) { p.family = index.toInt(), p.changed = true; },
             Families)},
        &grid);
    model->background = [](const Person& p) {
        return p.changed ? QColor(255, 255, 128) : QColor();
    };
    model->setRows(
        {{u"すずき"_s, 0}, {u"あべ"_s, 2}, {u"かとう"_s, 1}, {u"あべ"_s, 1}, {u"いとう"_s, 0}});
    grid.setModel(model);
    grid.resize(500, 300);
    grid.show();
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
        RowModel<Person>* model = people(grid);
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QCOMPARE(model->index(1, 1).data().toString(), u"個人"_s);
        QVERIFY(!model->index(1, 0).data(Qt::BackgroundRole).isValid()); // the grid's default
        QVERIFY(!(model->flags(model->index(1, 0)) & Qt::ItemIsEditable));

        const QModelIndex cell = model->index(1, 1);
        grid.view()->setCurrentIndex(cell);
        grid.view()->edit(cell);
        auto* combo = grid.view()->findChild<QComboBox*>();
        QVERIFY(combo);
        QCOMPARE(combo->currentText(), u"個人"_s);
        combo->setCurrentIndex(0);
        grid.view()->setCurrentIndex(model->index(1, 0)); // leaving the cell commits
        QVERIFY(model->at(1).family == 0 && model->at(1).changed);
        QCOMPARE(model->index(1, 0).data(Qt::BackgroundRole).value<QColor>(),
                 QColor(255, 255, 128));

        grid.setRowSelection();
        grid.setActiveCell(3, 1); // かとう
        QSignalSpy moved(&grid, &GridView::currentRowChanged);
        model->sortRows([](const Person& a, const Person& b) { return a.name < b.name; });
        // Equal names keep their order.
        QCOMPARE(names(*model), u"あべ0,あべ1,いとう0,かとう1,すずき0"_s);
        QCOMPARE(grid.activeRow(), 4); // かとう still
        grid.setActiveCell(2, 1);
        QCOMPARE(moved.last(), (QList<QVariant>{2}));
        model->removeAt(0);
        model->clear();
        QCOMPARE(grid.activeRow(), 0);
    }

    void clicksKeysAndBlocksAreReportedCountedFromOne() {
        GridView grid;
        people(grid);
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

        // A drag over the cells or the row headings is a block, told once; a click inside the
        // block shown and a click on a row heading are none.
        QWidget* headings = grid.view()->verticalHeader()->viewport();
        const auto heading = [&](int row) {
            return QPoint(5, grid.view()->verticalHeader()->sectionViewportPosition(row - 1) + 5);
        };
        QTest::mousePress(cells, Qt::LeftButton, {}, cellCentre(grid, 1, 1));
        QTest::mouseMove(cells, cellCentre(grid, 3, 2));
        QTest::mouseRelease(cells, Qt::LeftButton, {}, cellCentre(grid, 3, 2));
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 2, 1));
        QTest::mouseClick(headings, Qt::LeftButton, {}, heading(4));
        QTest::mousePress(headings, Qt::LeftButton, {}, heading(2));
        QTest::mouseMove(headings, heading(3));
        QTest::mouseRelease(headings, Qt::LeftButton, {}, heading(3));
        // Each block told once, none for the key, the click inside a block or on a heading.
        QCOMPARE(block, (QList<QList<QVariant>>{{4, 1, 5, 2}, {1, 1, 3, 2}, {2, 1, 3, 2}}));
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
        // Read back, a record gives its fields again.
        for (const auto& c : cases) {
            QCOMPARE(CsvRecord(c.fields).toUtf8(), c.bytes);
            QCOMPARE(CsvFields(CsvRecord(c.fields).chopped(2)), c.fields);
        }

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
