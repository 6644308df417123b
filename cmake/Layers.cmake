# The layers of the program, each a library that links only the layers below it:
# platform (no widgets), platform ui (windows, controls, printing), frame; domain (the shop's
# types and rules, on platform alone, so without widgets); data, the screens and the shell.
# Each layer is also linked alone into a shared check library that may leave no symbol
# unresolved: a file that reaches into a layer above its own fails the build. Sources are
# listed, not globbed: a new file is added here.

set(MIRVANE_PLATFORM_SOURCES
    src/platform/AppFolder.cpp
    src/platform/CsvText.cpp
    src/platform/FieldValues.cpp
    src/platform/Format.cpp
    src/platform/Gzip.cpp
    src/platform/NumberText.cpp
    src/platform/ShiftJis.cpp
    src/platform/WholeFile.cpp
    src/platform/AppFolder.h
    src/platform/CsvText.h
    src/platform/FieldValues.h
    src/platform/Failure.h
    src/platform/Format.h
    src/platform/Gzip.h
    src/platform/NumberText.h
    src/platform/ShiftJis.h
    src/platform/WholeFile.h
    src/platform/db/Connection.cpp
    src/platform/db/ConnectionString.cpp
    src/platform/db/RecordSet.cpp
    src/platform/db/SqlText.cpp
    src/platform/db/Transaction.cpp
    src/platform/db/Connection.h
    src/platform/db/ConnectionString.h
    src/platform/db/RecordSet.h
    src/platform/db/SqlText.h
    src/platform/db/Transaction.h
)
add_library(mirvane_platform STATIC ${MIRVANE_PLATFORM_SOURCES})
find_package(ZLIB REQUIRED)
target_link_libraries(mirvane_platform PUBLIC mirvane_settings Qt6::Core Qt6::Sql ZLIB::ZLIB)
target_include_directories(mirvane_platform PUBLIC ${CMAKE_SOURCE_DIR}/src)

set(MIRVANE_PLATFORM_UI_SOURCES
    src/platform/ui/Clock.cpp
    src/platform/ui/MsgBox.cpp
    src/platform/ui/SaveFileDialog.cpp
    src/platform/ui/Screen.cpp
    src/platform/ui/ShowModal.cpp
    src/platform/ui/SingleInstance.cpp
    src/platform/ui/Clock.h
    src/platform/ui/Caption.h
    src/platform/ui/MsgBox.h
    src/platform/ui/Named.h
    src/platform/ui/SaveFileDialog.h
    src/platform/ui/Screen.h
    src/platform/ui/ShowModal.h
    src/platform/ui/SingleInstance.h
    src/platform/ui/WaitCursor.h
    src/platform/controls/CharacterLimit.cpp
    src/platform/controls/CodeList.cpp
    src/platform/controls/ComboKeys.cpp
    src/platform/controls/FocusOrder.cpp
    src/platform/controls/FunctionKeyRow.cpp
    src/platform/controls/GridView.cpp
    src/platform/controls/Kana.cpp
    src/platform/controls/NumericInput.cpp
    src/platform/controls/xClndr.cpp
    src/platform/controls/xCmdBtn.cpp
    src/platform/controls/xDate.cpp
    src/platform/controls/xField.cpp
    src/platform/controls/xInput.cpp
    src/platform/controls/xKana.cpp
    src/platform/controls/xNum.cpp
    src/platform/controls/xZip.cpp
    src/platform/controls/CharacterLimit.h
    src/platform/controls/CodeList.h
    src/platform/controls/ComboKeys.h
    src/platform/controls/FocusOrder.h
    src/platform/controls/FunctionKeyRow.h
    src/platform/controls/GridView.h
    src/platform/controls/Kana.h
    src/platform/controls/NumericInput.h
    src/platform/controls/RowModel.h
    src/platform/controls/xClndr.h
    src/platform/controls/xCmdBtn.h
    src/platform/controls/xDate.h
    src/platform/controls/xField.h
    src/platform/controls/xInput.h
    src/platform/controls/xKana.h
    src/platform/controls/xLabel.h
    src/platform/controls/xNum.h
    src/platform/controls/xPass.h
    src/platform/controls/xZip.h
    src/platform/report/FormPainter.cpp
    src/platform/report/FormTemplate.cpp
    src/platform/report/Report.cpp
    src/platform/report/ReportJob.cpp
    src/platform/report/Typesetting.cpp
    src/platform/report/FormPainter.h
    src/platform/report/FormTemplate.h
    src/platform/report/Report.h
    src/platform/report/ReportJob.h
    src/platform/report/Typesetting.h
)
add_library(mirvane_platform_ui STATIC ${MIRVANE_PLATFORM_UI_SOURCES})
target_link_libraries(mirvane_platform_ui PUBLIC mirvane_settings mirvane_platform Qt6::Widgets Qt6::PrintSupport)

set(MIRVANE_FRAME_SOURCES
    src/frame/BasCmnSubFun.cpp
    src/frame/Conflicts.cpp
    src/frame/CsvExport.cpp
    src/frame/DateFields.cpp
    src/frame/Globals.cpp
    src/frame/Log.cpp
    src/frame/LogArchive.cpp
    src/frame/Messages.cpp
    src/frame/Procedure.cpp
    src/frame/BasCmnSubFun.h
    src/frame/Conflicts.h
    src/frame/CsvExport.h
    src/frame/DateFields.h
    src/frame/Globals.h
    src/frame/Log.h
    src/frame/LogArchive.h
    src/frame/MessageCatalogue.h
    src/frame/Messages.h
    src/frame/Procedure.h
)
add_library(mirvane_frame STATIC ${MIRVANE_FRAME_SOURCES})
target_link_libraries(mirvane_frame PUBLIC mirvane_settings mirvane_platform_ui)

set(MIRVANE_DOMAIN_SOURCES
    src/domain/Age.cpp
    src/domain/DailyClosing.cpp
    src/domain/Household.cpp
    src/domain/ListRow.cpp
    src/domain/Order.cpp
    src/domain/PostalCode.cpp
    src/domain/Prescription.cpp
    src/domain/PrintMarks.cpp
    src/domain/Purchase.cpp
    src/domain/PurchaseLine.cpp
    src/domain/Receipt.cpp
    src/domain/SalesAnalysis.cpp
    src/domain/SearchConditions.cpp
    src/domain/Age.h
    src/domain/Customer.h
    src/domain/DailyClosing.h
    src/domain/Household.h
    src/domain/ListRow.h
    src/domain/Master.h
    src/domain/Order.h
    src/domain/PostalCode.h
    src/domain/Prescription.h
    src/domain/PrintMarks.h
    src/domain/Purchase.h
    src/domain/PurchaseLine.h
    src/domain/Receipt.h
    src/domain/SalesAnalysis.h
    src/domain/SearchConditions.h
    src/domain/Ymd.h
)
add_library(mirvane_domain STATIC ${MIRVANE_DOMAIN_SOURCES})
target_link_libraries(mirvane_domain PUBLIC mirvane_settings mirvane_platform)

set(MIRVANE_DATA_SOURCES
    src/data/AnalysisStore.cpp
    src/data/Backup.cpp
    src/data/CustomerQueries.cpp
    src/data/CustomerSearch.cpp
    src/data/CustomerStore.cpp
    src/data/DailyClosingStore.cpp
    src/data/DatabaseCopy.cpp
    src/data/GuardedWrite.cpp
    src/data/Lookups.cpp
    src/data/MasterStore.cpp
    src/data/Numbering.cpp
    src/data/OrderStore.cpp
    src/data/PurchaseStore.cpp
    src/data/ReceiptStore.cpp
    src/data/Schema.cpp
    src/data/SettingStore.cpp
    src/data/ShopStore.cpp
    src/data/ShopDatabase.cpp
    src/data/ShopExport.cpp
    src/data/ZipImport.cpp
    src/data/ZipSearch.cpp
    src/data/AnalysisStore.h
    src/data/Backup.h
    src/data/CustomerQueries.h
    src/data/CustomerSearch.h
    src/data/CustomerStore.h
    src/data/DailyClosingStore.h
    src/data/DatabaseCopy.h
    src/data/GuardedWrite.h
    src/data/Lookups.h
    src/data/MasterStore.h
    src/data/Numbering.h
    src/data/OrderStore.h
    src/data/PurchaseStore.h
    src/data/ReceiptStore.h
    src/data/Schema.h
    src/data/SettingStore.h
    src/data/ShopStore.h
    src/data/ShopDatabase.h
    src/data/ShopExport.h
    src/data/ZipImport.h
    src/data/ZipSearch.h
)
add_library(mirvane_data STATIC ${MIRVANE_DATA_SOURCES})
target_link_libraries(mirvane_data PUBLIC mirvane_settings mirvane_frame mirvane_domain)

set(MIRVANE_SCREENS_SOURCES
    src/analysis/AnalysisCharts.cpp
    src/analysis/AnalysisViews.cpp
    src/analysis/FrmBunseki.cpp
    src/customer/CustomerList.cpp
    src/customer/FrmKazoku.cpp
    src/customer/FrmKokyaku.cpp
    src/customer/FrmKokyakuForm.cpp
    src/customer/PurchaseGrid.cpp
    src/customer/UriageEntry.cpp
    src/prescription/LeaveRules.cpp
    src/prescription/PrescriptionReference.cpp
    src/prescription/PrescriptionWiring.cpp
    src/history/FrmRireki.cpp
    src/history/UriageBlock.cpp
    src/search/FrmIchiran.cpp
    src/search/FrmIchiranSub.cpp
    src/search/FrmKensaku.cpp
    src/search/FrmTotalKensaku.cpp
    src/search/FrmTotalKensakuForm.cpp
    src/search/ListCsv.cpp
    src/search/ListGrid.cpp
    src/print/DailyClosingPrint.cpp
    src/print/FrmPrint.cpp
    src/print/OrderSlip.cpp
    src/print/PrintRun.cpp
    src/print/ReceiptPrint.cpp
    src/orders/FrmRyosyu.cpp
    src/orders/FrmRyosyuForm.cpp
    src/masters/FrmMaster.cpp
    src/orders/FrmJyuchu.cpp
    src/orders/FrmJyuchuForm.cpp
    src/masters/FrmTenpo.cpp
    src/masters/TaxRatePanel.cpp
    src/pickers/AddressList.cpp
    src/pickers/FrmCalender.cpp
    src/pickers/FrmZipList.cpp
    src/orders/FrmNikkei.cpp
    src/orders/FrmOwatasi.cpp
    src/orders/PickupBoard.cpp
    src/analysis/AnalysisCharts.h
    src/analysis/AnalysisViews.h
    src/analysis/FrmBunseki.h
    src/customer/CustomerList.h
    src/customer/FrmKazoku.h
    src/customer/FrmKokyaku.h
    src/customer/PurchaseGrid.h
    src/customer/UriageEntry.h
    src/prescription/LeaveRules.h
    src/prescription/PrescriptionReference.h
    src/prescription/PrescriptionWiring.h
    src/history/FrmRireki.h
    src/history/UriageBlock.h
    src/search/FrmIchiran.h
    src/search/FrmIchiranSub.h
    src/search/FrmKensaku.h
    src/search/FrmTotalKensaku.h
    src/search/ListCsv.h
    src/search/ListGrid.h
    src/print/DailyClosingPrint.h
    src/print/FrmPrint.h
    src/print/OrderSlip.h
    src/print/PrintRun.h
    src/print/ReceiptPrint.h
    src/orders/FrmRyosyu.h
    src/masters/FrmMaster.h
    src/orders/FrmJyuchu.h
    src/masters/FrmTenpo.h
    src/masters/TaxRatePanel.h
    src/pickers/AddressList.h
    src/pickers/FrmCalender.h
    src/pickers/FrmZipList.h
    src/orders/FrmNikkei.h
    src/orders/FrmOwatasi.h
    src/orders/PickupBoard.h
)
add_library(mirvane_screens STATIC ${MIRVANE_SCREENS_SOURCES})
# Qt Charts draws the sales analysis' charts, on the screen and on paper; only the screens use it.
find_package(Qt6 REQUIRED COMPONENTS Charts)
target_link_libraries(mirvane_screens PUBLIC mirvane_settings mirvane_data Qt6::Charts)

set(MIRVANE_SHELL_SOURCES
    src/shell/BasSubMain.cpp
    src/shell/FrmMenu.cpp
    src/shell/FrmPsw.cpp
    src/shell/BasSubMain.h
    src/shell/FrmMenu.h
    src/shell/FrmPsw.h
)
add_library(mirvane_shell STATIC ${MIRVANE_SHELL_SOURCES})
target_link_libraries(mirvane_shell PUBLIC mirvane_settings mirvane_screens)

# The check: each layer linked alone against the layers below it, nothing left open.
foreach(layer platform platform_ui frame domain data screens shell)
    add_library(mirvane_${layer}_check SHARED $<TARGET_OBJECTS:mirvane_${layer}>)
    get_target_property(below mirvane_${layer} LINK_LIBRARIES)
    target_link_libraries(mirvane_${layer}_check PRIVATE ${below})
    target_link_options(mirvane_${layer}_check PRIVATE -Wl,--no-undefined)
    set_target_properties(mirvane_${layer}_check PROPERTIES LIBRARY_OUTPUT_DIRECTORY
        ${CMAKE_BINARY_DIR}/layer-checks)
endforeach()

# What the programs, the tools and the tests link: every layer.
add_library(mirvane_core INTERFACE)
target_link_libraries(mirvane_core INTERFACE mirvane_shell)
