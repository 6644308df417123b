#pragma once

#include <QString>

// The catalogue of coded messages. Each is the ten-character code followed by its text and is
// shown through CmnDspMsg, which takes icon, buttons and title from the code.
// clang-format off
inline const QString OpeErr_000 = QStringLiteral("OpeErr_000［ Ｘ ］で画面を閉じることはできません。");
inline const QString OpeErr_001 = QStringLiteral("OpeErr_001未入力です。必ず入力して下さい。");
inline const QString OpeErr_002 = QStringLiteral("OpeErr_002明細行が未選択です。必ず１行は選択して下さい。");
inline const QString OpeErr_003 = QStringLiteral("OpeErr_003入力値に矛盾があります。");
inline const QString OpeErr_004 = QStringLiteral("OpeErr_004入力値が有効範囲外です。");
inline const QString OpeErr_005 = QStringLiteral("OpeErr_005入力されたパスワードは誤りです。");
inline const QString OpeErr_006 = QStringLiteral("OpeErr_006【 Kestrava 】の起動を中止します。");
inline const QString OpeErr_007 = QStringLiteral("OpeErr_007ゼロ入力はできません。");
inline const QString OpeErr_008 = QStringLiteral("OpeErr_008入力されたコードの情報は、存在しません。");
inline const QString OpeErr_009 = QStringLiteral("OpeErr_009入力されたコードの情報が既に、存在します。");
inline const QString OpeErr_010 = QStringLiteral("OpeErr_010このNo.は、既に使われています。");
inline const QString OpeErr_011 = QStringLiteral("OpeErr_011選択されていない項目があります。");
inline const QString OpeErr_012 = QStringLiteral("OpeErr_012該当するデータはありませんでした。");
inline const QString OpeErr_013 = QStringLiteral("OpeErr_013該当するマスタはありませんでした。");
inline const QString OpeErr_014 = QStringLiteral("OpeErr_014これ以上のデータはありません。");
inline const QString OpeErr_015 = QStringLiteral("OpeErr_015入力形跡がある場合は、登録保存してからお願いします。");
inline const QString OpeErr_016 = QStringLiteral("OpeErr_016再検索を開始した場合、訂正分はキャンセル扱いになります。");
inline const QString OpeErr_017 = QStringLiteral("OpeErr_017削除扱いの明細を変更する事はできません。");
inline const QString OpeInf_001 = QStringLiteral("OpeInf_001データは正常に保存されました。");
inline const QString OpeInf_002 = QStringLiteral("OpeInf_002データは正常に削除されました。");
inline const QString OpeInf_003 = QStringLiteral("OpeInf_003新規登録に進みます。");
inline const QString OpeInf_004 = QStringLiteral("OpeInf_004月次集計処理は正常に行われました。");
inline const QString OpeInf_005 = QStringLiteral("OpeInf_005請求締処理は正常に行われました。");
inline const QString OpeInf_006 = QStringLiteral("OpeInf_006処理は正常に終了しました。");
inline const QString OpeInf_007 = QStringLiteral("OpeInf_007再検索を実行すると、最新情報を照会します。");
inline const QString OpeInf_008 = QStringLiteral("OpeInf_008検索完了です。");
inline const QString OpeQes_001 = QStringLiteral("OpeQes_001登録してよろしいですか？");
inline const QString OpeQes_002 = QStringLiteral("OpeQes_002本当に削除してよろしいですか？");
inline const QString OpeQes_003 = QStringLiteral("OpeQes_003該当データは、ありません。続いて新規登録に進みますか？");
inline const QString OpeQes_004 = QStringLiteral("OpeQes_004月次集計処理を始めてよろしいですか？");
inline const QString OpeQes_005 = QStringLiteral("OpeQes_005請求締処理を始めてよろしいですか？");
inline const QString OpeQes_006 = QStringLiteral("OpeQes_006請求書削除（再締処理準備）を始めてよろしいですか？");
inline const QString OpeQes_007 = QStringLiteral("OpeQes_007訂正行が保存されていません。キャンセル扱いになりますがよろしいですか？");
inline const QString OpeQes_008 = QStringLiteral("OpeQes_008訂正分が保存されていない場合、キャンセル扱いになりますがよろしいですか？");
inline const QString OpeQes_009 = QStringLiteral("OpeQes_009縦ハガキ対応の印刷を始めますがよろしいですか");
inline const QString OpeQes_010 = QStringLiteral("OpeQes_010Ａ４用紙を縦にセットされましたか。");
inline const QString OpeQes_011 = QStringLiteral("OpeQes_011顧客情報のみ登録しますが、よろしいですか。");
inline const QString OpeQes_012 = QStringLiteral("OpeQes_012横ハガキ対応の印刷を始めますがよろしいですか。");
inline const QString SysErr_001 = QStringLiteral("SysErr_001システム管理（ｉｎｉ）の取得に失敗しました。");
inline const QString SysErr_002 = QStringLiteral("SysErr_002既に起動されています。多重起動はできません。");
inline const QString SysErr_003 = QStringLiteral("SysErr_003最終NOの取得に失敗しました。");
inline const QString SysErr_004 = QStringLiteral("SysErr_004データ間の整合性に問題が起きている為、表示できません。");
inline const QString SysErr_005 = QStringLiteral("SysErr_005データ更新は失敗しました。");
inline const QString SysErr_006 = QStringLiteral("SysErr_006月次集計処理は失敗しました。");
inline const QString SysErr_007 = QStringLiteral("SysErr_007他端末で同時更新された可能性があります。再度、「保存」を押して下さい。");
inline const QString SysErr_008 = QStringLiteral("SysErr_008システム管理用マスタが見つかりません。");
inline const QString SysErr_009 = QStringLiteral("SysErr_009予期しないエラーが発生しました。");
// clang-format on
