// The grid: rows from tab-separated text, colours, sorting by two keys, deleting, drop-down
// cells and the notifications the screens act on.
#include "platform/controls/SpreadGrid.h"

#include <QComboBox>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTableView>
#include <QtTest>

namespace {

QStringList column(const SpreadGrid& grid, int col) {
    QStringList cells;
    for (int row = 1; row <= grid.maxRows(); ++row)
        cells << grid.text(row, col);
    return cells;
}

QPoint cellCentre(const SpreadGrid& grid, int row, int col) {
    return grid.view()->visualRect(grid.model()->index(row - 1, col - 1)).center();
}

} // namespace

class TestGrid : public QObject {
    Q_OBJECT

private slots:
    void rowsAreWrittenFromTabSeparatedText() {
        SpreadGrid grid;
        grid.setMaxCols(4);
        QCOMPARE(grid.addRow(QStringLiteral("1\t山田\t\t札幌\r")), 1);
        QCOMPARE(grid.addRow(QStringLiteral("2\t鈴木")), 2);
        QCOMPARE(grid.maxRows(), 2);
        QCOMPARE(grid.text(1, 2), QStringLiteral("山田"));
        QCOMPARE(grid.text(1, 3), QString());
        QCOMPARE(grid.text(1, 4), QStringLiteral("札幌"));
        QCOMPARE(grid.text(2, 4), QString());
        // Cells beyond the grid are dropped; cells outside it read as empty.
        grid.setRowText(2, QStringLiteral("a\tb\tc\td\te\tf"));
        QCOMPARE(grid.text(2, 4), QStringLiteral("d"));
        QCOMPARE(grid.text(3, 1), QString());
        QCOMPARE(grid.text(0, 1), QString());

        grid.setText(1, 3, QStringLiteral("x"));
        QCOMPARE(grid.text(1, 3), QStringLiteral("x"));
        grid.setMaxRows(5);
        QCOMPARE(grid.text(5, 1), QString());
        grid.clearRows();
        QCOMPARE(grid.maxRows(), 0);
        QCOMPARE(grid.activeRow(), 0);
    }

    void sortingWithTwoKeysMovesWholeRowsWithTheirColours() {
        SpreadGrid grid;
        grid.setMaxCols(3);
        grid.setColumnNumeric(2, true);
        grid.addRow(QStringLiteral("すずき\t1,200\ta"));
        grid.addRow(QStringLiteral("あべ\t900\tb"));
        grid.addRow(QStringLiteral("かとう\t1,200\tc"));
        grid.addRow(QStringLiteral("あべ\t\td"));
        grid.addRow(QStringLiteral("いとう\t10,000\te"));
        grid.setRowColor(3, QColor(255, 255, 128));

        // Amount descending (as numbers, not as text), then kana ascending.
        grid.sort({{2, Qt::DescendingOrder}, {1, Qt::AscendingOrder}});
        QCOMPARE(column(grid, 3),
                 (QStringList{QStringLiteral("e"), QStringLiteral("c"), QStringLiteral("a"),
                              QStringLiteral("b"), QStringLiteral("d")}));
        QCOMPARE(grid.rowColor(2), QColor(255, 255, 128));
        QVERIFY(!grid.rowColor(3).isValid());

        // One key: equal keys keep their order.
        grid.sort({{1, Qt::AscendingOrder}});
        QCOMPARE(column(grid, 3),
                 (QStringList{QStringLiteral("b"), QStringLiteral("d"), QStringLiteral("e"),
                              QStringLiteral("c"), QStringLiteral("a")}));
        grid.sort({{1, Qt::DescendingOrder}});
        QCOMPARE(grid.text(1, 1), QStringLiteral("すずき"));
    }

    void rowColoursAndDeletion() {
        SpreadGrid grid;
        grid.setMaxCols(2);
        for (int i = 1; i <= 4; ++i)
            grid.addRow(QString::number(i) + QStringLiteral("\tx"));
        QVERIFY(!grid.rowColor(1).isValid()); // the grid's default
        grid.setRowColor(2, QColor(255, 128, 128));
        grid.setRowColor(3, QColor(128, 255, 255));
        QCOMPARE(grid.view()->model()->index(1, 0).data(Qt::BackgroundRole).value<QColor>(),
                 QColor(255, 128, 128));
        grid.deleteRow(2);
        QCOMPARE(column(grid, 1),
                 (QStringList{QStringLiteral("1"), QStringLiteral("3"), QStringLiteral("4")}));
        QCOMPARE(grid.rowColor(2), QColor(128, 255, 255));
        grid.setRowColor(2, QColor());
        QVERIFY(!grid.rowColor(2).isValid());
        grid.deleteRow(9);
        QCOMPARE(grid.maxRows(), 3);
    }

    void dropDownCellsHoldTheIndexAndShowTheItem() {
        SpreadGrid grid;
        grid.setMaxCols(2);
        grid.setColumnDropDown(2, {QStringLiteral("代表"), QStringLiteral("家族"),
                                   QStringLiteral("個人"), QStringLiteral("DM不要")});
        grid.setColumnEditable(2, true);
        grid.addRow(QStringLiteral("1\t2"));
        QCOMPARE(grid.displayText(1, 2), QStringLiteral("個人"));
        QCOMPARE(grid.text(1, 2), QStringLiteral("2"));

        grid.resize(400, 200);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QSignalSpy changed(&grid, &SpreadGrid::cellChanged);
        const QModelIndex cell = grid.model()->index(0, 1);
        grid.view()->setCurrentIndex(cell);
        grid.view()->edit(cell);
        auto* combo = grid.view()->findChild<QComboBox*>();
        QVERIFY(combo);
        QCOMPARE(combo->currentText(), QStringLiteral("個人"));
        combo->setCurrentIndex(3);
        grid.view()->setCurrentIndex(grid.model()->index(0, 0)); // leaving the cell commits
        QCOMPARE(grid.text(1, 2), QStringLiteral("3"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first(), (QList<QVariant>{1, 2}));
        // Writing a cell from the program is not a change by the user.
        grid.setText(1, 2, QStringLiteral("0"));
        QCOMPARE(changed.count(), 1);
    }

    void clicksAndBlocksAreReportedCountedFromOne() {
        SpreadGrid grid;
        grid.setMaxCols(3);
        grid.setHeaders({QStringLiteral("№"), QStringLiteral("印刷"), QStringLiteral("氏 名")});
        for (int i = 0; i < 5; ++i)
            grid.addRow(QStringLiteral("a\tb\tc"));
        grid.resize(500, 300);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        QCOMPARE(grid.activeRow(), 1); // the first row until another is chosen

        QSignalSpy clicked(&grid, &SpreadGrid::clicked);
        QSignalSpy doubleClicked(&grid, &SpreadGrid::doubleClicked);
        QSignalSpy block(&grid, &SpreadGrid::blockSelected);
        QWidget* cells = grid.view()->viewport();
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 3, 2));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.last(), (QList<QVariant>{3, 2}));
        QCOMPARE(grid.activeRow(), 3);
        QCOMPARE(grid.activeCol(), 2);
        QCOMPARE(block.count(), 0);

        // A real double-click: a click, then the second press arrives as a double-click.
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 4, 1));
        QTest::mouseDClick(cells, Qt::LeftButton, {}, cellCentre(grid, 4, 1));
        QCOMPARE(doubleClicked.count(), 1);
        QCOMPARE(doubleClicked.last(), (QList<QVariant>{4, 1}));

        QHeaderView* header = grid.view()->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(2) + 5, 5));
        QVERIFY(!clicked.isEmpty());
        QCOMPARE(clicked.last(), (QList<QVariant>{0, 3}));

        // Shift-click selects the block from the current cell.
        QTest::mouseClick(cells, Qt::LeftButton, {}, cellCentre(grid, 4, 1));
        QTest::mouseClick(cells, Qt::LeftButton, Qt::ShiftModifier, cellCentre(grid, 5, 2));
        QCOMPARE(block.count(), 1);
        QCOMPARE(block.last(), (QList<QVariant>{4, 1, 5, 2}));

        grid.setActiveCell(2, 3);
        QCOMPARE(grid.activeRow(), 2);
    }
};

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"
