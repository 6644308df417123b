// The grid of the screens: a view over typed rows. Cells, colours and edits come from the rows;
// the current row follows its row through sorting; clicks, blocks and key moves are reported
// counted from 1. A table written out as a CSV file.
#include "platform/CsvText.h"
#include "platform/controls/GridView.h"
#include "platform/controls/RowModel.h"
#include "support/Roads.h"

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

} // namespace

class TestGrid : public QObject {
    Q_OBJECT

private slots:
    // Cells, colours and drop-down edits come from the rows; clicks, key moves and blocks are
    // reported counted from 1; the current row follows its row through a sort.
    void cellsClicksEditsAndSorting() {
        GridView grid;
        RowModel<Person>* model = people(grid);
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QCOMPARE(grid.activeRow(), 1); // the first row until another is chosen
        QVERIFY(!model->index(1, 0).data(Qt::BackgroundRole).isValid()); // the grid's default
        QVERIFY(!(model->flags(model->index(1, 0)) & Qt::ItemIsEditable));

        QSignalSpy clicked(&grid, &GridView::clicked);
        QSignalSpy block(&grid, &GridView::blockSelected);
        QSignalSpy moved(&grid, &GridView::currentRowChanged);
        QWidget* cells = grid.view()->viewport();
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 3, 2));
        QCOMPARE(clicked.last(), (QList<QVariant>{3, 2}));
        QCOMPARE(moved.last(), (QList<QVariant>{3}));
        QCOMPARE(grid.activeCol(), 2);
        QHeaderView* header = grid.view()->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(1) + 5, 5));
        QCOMPARE(clicked.last(), (QList<QVariant>{0, 2}));

        // Shift-click selects the block from the current cell; a drag over the row headings is a
        // block, told once.
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 4, 1));
        QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, cellCentre(grid, 5, 2));
        QWidget* headings = grid.view()->verticalHeader()->viewport();
        const auto heading = [&](int row) {
            return QPoint(5, grid.view()->verticalHeader()->sectionViewportPosition(row - 1) + 5);
        };
        QTest::mousePress(headings, Qt::LeftButton, {}, heading(2));
        QTest::mouseMove(headings, heading(3));
        QTest::mouseRelease(headings, Qt::LeftButton, {}, heading(3));
        QCOMPARE(block, (QList<QList<QVariant>>{{4, 1, 5, 2}, {2, 1, 3, 2}}));

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
        model->sortRows([](const Person& a, const Person& b) { return a.name < b.name; });
        // Equal names keep their order: the edited あべ (代表 now) before the other.
        QCOMPARE(ColumnTexts(grid, 1) + u' ' + ColumnTexts(grid, 2),
                 u"あべ|あべ|いとう|かとう|すずき 代表|家族|代表|家族|代表"_s);
        QCOMPARE(grid.activeRow(), 4); // かとう still
        grid.setActiveCell(2, 1);
        QCOMPARE(moved.last(), (QList<QVariant>{2}));
        model->removeAt(0);
        model->clear();
        QCOMPARE(grid.activeRow(), 0);
    }

    // The exact bytes of records: quoted only for a comma, a double quote or a line break, the
    // quotes doubled; blanks, kana and empty values as they are.
    void csvRecordsAndFiles() {
        const std::pair<QStringList, QByteArray> cases[] = {
            {{u"1"_s, u"青木 太郎"_s, u"ｱｵｷ"_s}, "1,青木 太郎,ｱｵｷ\r\n"},
            {{u"a,b"_s, u"say \"hi\""_s, u"\""_s}, "\"a,b\",\"say \"\"hi\"\"\",\"\"\"\"\r\n"},
            {{u"1\r2"_s, u"3\n4"_s, u"5\r\n6"_s}, "\"1\r2\",\"3\n4\",\"5\r\n6\"\r\n"},
            {{QString(), u"  函館市 "_s, QString(), QString()}, ",  函館市 ,,\r\n"},
            {{QString()}, "\r\n"},
            {{u"O'Neil;\t"_s, u"=1+2"_s}, "O'Neil;\t,=1+2\r\n"}};
        // Read back, a record gives its fields again.
        for (const auto& [fields, bytes] : cases) {
            QCOMPARE(CsvRecord(fields).toUtf8(), bytes);
            QCOMPARE(CsvFields(CsvRecord(fields).chopped(2)), fields);
        }

        // The folder is made; the file appears whole, with the mark, only when committed, and
        // one abandoned leaves the last one as it was.
        QTemporaryDir dir;
        const QString path = dir.filePath(u"Export/顧客.csv"_s);
        {
            CsvFile file(path);
            file.write(cases[0].first);
            QVERIFY(!QFile::exists(path));
            file.commit();
        }
        {
            CsvFile abandoned(path);
            abandoned.write(cases[1].first);
        }
        QCOMPARE(ReadFile(path), "\xEF\xBB\xBF" + cases[0].second);
    }
};

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"
