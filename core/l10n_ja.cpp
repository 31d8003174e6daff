#include "l10n_tables.h"

namespace quenchly::L10n::Tables {
namespace {

constexpr Entry entries[] = {
    {"protection_applies_to", "Protectionの対象"},
    {"protection_targets", "Ollama、MLX、LM Studio headless、llama.cpp。コードエディタ、ブラウザ、Mailは対象外。"},
    {"only_listed_ai", "Ollama、MLX、LM Studioのみ。"},
    {"live_data", "ライブデータ"},
    {"check_for_updates", "アップデートを確認…"},
    {"report_problem", "問題を報告"},
    {"uninstall", "アンインストール…"},
    {"quit", "Quenchlyを終了"},
    {"updates_not_configured", "アップデートはまだ設定されていません"},
    {"start_background_checks", "バックグラウンドチェックを開始"},
    {"unload_listed_ai", "対象AIをアンロード"},
    {"open_at_login", "ログイン時に開く"},
    {"auto_updates", "自動アップデート確認"},
    {"load", "負荷"},
    {"swap", "スワップ"},
    {"extra_memory_on_disk", "ディスク上の追加メモリ"},
    {"extra_on", "オン"},
    {"protection_on", "Protection オン"},
    {"protection_off", "Protection オフ"},
    {"checks_not_set_up", "チェック未設定"},
    {"retaining_memory_on", "メモリ保持: オン"},
    {"retaining_memory", "メモリを保持しています。"},
    {"checking_in_a_moment", "まもなくチェックします。"},
    {"checking_now", "チェック中"},
    {"cadence_quiet", "約1分ごとにチェック"},
    {"set_aside_heading", "除外 (%d)"},
    {"acknowledge", "了解"},
    {"clear_all_aside", "すべて解除"},
    {"off", "オフ"},
    {"acknowledging", "了解処理中…"},
    {"clear_all_n", "すべて解除 (%d)"},
    {"open_at_login_on", "ログイン時に開く: オン"},
    {"open_at_login_off", "ログイン時に開く: オフ"},
    {"auto_updates_on", "自動アップデート確認: オン"},
    {"auto_updates_off", "自動アップデート確認: オフ"},
    {"copyright", "© 2026 Quenchly"},
    {"help_protection_on",
     "Macの負荷が高いとき、Protectionは対象のローカルAI（Ollama、MLX、LM Studio headless、"
     "llama-server）をその場で抑え、MacとAIがCPUを奪い合わないようにします。"
     "モデルは読み込まれたままで、メモリも保持され、作業はそのまま続きます。"
     "Protectionがオンの間は、「メモリ保持」もオンのままです。"
     "アプリを終了したり、すべてのRAMを解放したりすることはありません。"},
    {"help_protection_off",
     "Macが過負荷のときでも、対象AIはフルスピードで動作します。"
     "最大の推論スループットが必要で、"
     "画面の動きが重くなったりスワップが増えたりするリスクを受け入れられる場合にのみ使用してください。"
     "Quenchlyは負荷とスワップのメーターを引き続き表示しますが、"
     "Macの使いやすさを保つために対象AIのペースを調整することはありません。"},
    {"help_checks_not_set_up",
     "メニューバーのアイコンは動作していますが、"
     "負荷とスワップを読み取るバックグラウンドチェッカーはまだインストールされていません。"
     "表示されるメーターは最後のスナップショットのもので、Protectionのリアルタイムの判断ではありません。"
     "「バックグラウンドチェックを開始」をクリックして設定を完了してください。"},
    {"help_start_background_checks",
     "負荷とスワップを1分ごとに読み取り、メニューに表示できるステータスを書き出す、"
     "小さなバックグラウンドチェッカーをインストールします。"
     "これがないと、表示されるのはメーターだけで、Protectionのリアルタイムの判断は表示されません。"
     "設定は一度だけです。"},
    {"help_retaining_memory",
     "「Protection オン」のときは、読み込まれたモデルがメモリに残るため、"
     "チャットのコンテキストと重みをいつでも使える状態に保てます。"
     "対象AIはその場で抑えられるので、MacとAIがCPUを奪い合うことはありません。"
     "これはProtectionがオンのときは常にオンであり、個別に切り替えるものではありません。"},
    {"help_unload_listed_ai",
     "Quenchlyが管理する、読み込み済みのローカルAIモデル（Ollama、MLXなど）をアンロードし、"
     "使用していたRAMを解放します。"
     "スワップが多いときや、macOSがメモリについて警告したときに使用してください。"
     "次のチャットでモデルが再び読み込まれます。"},
    {"help_extra_memory_status",
     "macOSは、進行中の作業を保持するために、ディスク領域を追加メモリ（スワップ）として使用しています。"
     "これはアクティビティモニタのRAMの割合とは別のもので、両方が同時に高くなることもあります。"
     "作業は引き続き進んでいますが、スワップが危険な水準のままの場合は、"
     "Quenchlyが対象AIのアンロードを提案することがあります。"},
    {"help_extra_memory_tip",
     "対象AIがまだモデルを読み込んでいる状態で、ディスク上の追加メモリが多くなっています。"
     "スワップがさらに増える前に、「対象AIをアンロード」でRAMを解放することを検討してください。"
     "この操作でアプリが終了したり、Protectionの設定が変わったりすることはありません。"},
    {"help_load_meter",
     "Macの負荷をCPUコアに対するパーセンテージで示したもので、リアルタイムに測定されます。"
     "値が高いほど、CPU時間を待っているスレッドが多いことを意味します。"
     "アクティビティモニタのプロセスごとのCPUの割合や、温度の測定値とは異なります。"},
    {"help_swap_meter",
     "ディスクに書き出された追加メモリ（スワップファイルの使用量）です。"
     "スワップが多いときは、macOSがRAMの内容を保持するためにディスク領域を借りていることを意味します。"
     "このバーが伸びていくときは、Macが重く感じられることがよくあります。このバーは、"
     "使用率を表示するRAMウィジェットとは別のものです。"},
    {"help_protection_applies_to",
     "過負荷のとき、Protectionは次の対象AIをその場で抑えます: Ollama、MLX、LM Studio headless、"
     "およびllama-serverまたはllama-cpp-server。"
     "カスタムのllamaバイナリは、プロセスがこれらの名前に一致する場合にのみ対象になります。"},
    {"help_set_aside",
     "ループチェックの後にQuenchlyが除外した対象AIです。"
     "「了解」をクリックするまでフルスピードで動作します。"
     "「了解」をクリックすると、再び過負荷になった場合に、"
     "次のチェックでProtectionが対象AIのペースを落とせるようになります。"},
    {"help_acknowledge",
     "「除外」からアプリを1つ取り除き、"
     "過負荷になったときにProtectionが対象AIのペースを再び落とせるようにします。"
     "そのアプリを制限なしのフルスピードで動かす必要がなくなったときに使用してください。"
     "モデルのアンロードや、Protectionのオン／オフの変更は行いません。"},
    {"help_clear_all_aside",
     "「除外」のすべての行に「了解」を一度に適用します。"
     "これまでに除外されたすべてのアプリに、次のチェックでProtectionを適用したいときに使用してください。"
     "Protectionのオン／オフを変更したり、何かをアンインストールしたりすることはありません。"},
    {"help_live_data",
     "このMacのブラウザでライブダッシュボードを開きます。"
     "現在の負荷、スワップ、Protectionの状態、最近のチェック履歴を表示します。"
     "表示専用のため、Protectionの変更やアンロードは、ダッシュボードではなくメニューから行ってください。"},
    {"help_check_for_updates",
     "Quenchlyのアップデートサイトに、より新しいビルドがないか調べます。"
     "見つかった場合は、インストールするかどうかを選択できます。"
     "Quenchlyが知らないうちにアップデートされることはありません。"},
    {"help_auto_updates",
     "オンのとき、Quenchlyはアップデートサイトに、より新しいビルドがないかを定期的に確認します。"
     "見つかった場合は、インストールするかどうかを選択できます。"
     "バックグラウンドでインストールされることはありません。"
     "オフにすると、このバックグラウンドでの確認は停止します。"
     "「アップデートを確認」は引き続きいつでも使用できます。"},
    {"help_open_at_login",
     "Quenchlyをログイン項目に追加し、再起動後にメニューバーのアイコンが表示されるようにします。"
     "バックグラウンドチェックのインストールや、Protectionのオン／オフの切り替えは行いません。"
     "Protectionのリアルタイムの判断には、別途「バックグラウンドチェックを開始」が必要です。"},
    {"help_report_problem",
     "このMacの診断情報（バージョン、負荷、スワップ、Protectionの状態）があらかじめ入力された、"
     "サポート宛てのメールを開きます。"
     "Mailで「送信」を押すまで、データは送信されません。"
     "何かがおかしいときや、チェックが繰り返し失敗するときに使用してください。"},
    {"help_uninstall",
     "バックグラウンドチェッカーとQuenchlyのメニューバーアプリを、このMacから削除します。"
     "Ollama、MLX、その他のAIアプリはアンインストールしません。"},
    {"help_quit",
     "メニューバーアプリだけを終了します。"
     "バックグラウンドチェックがインストールされている場合は、そのまま動作し続け、"
     "Protectionも設定どおりに保たれます。"
     "Quenchlyは「アプリケーション」フォルダまたはログイン項目から開き直せます。"},
    {"turn_on", "オンにする"},
    {"turn_off", "オフにする"},
    {"install", "インストール"},
    {"status", "ステータス"},
    {"extra_memory_tip", "追加メモリのヒント"},
    {"help", "ヘルプ"},
    {"titled_help", "%@、ヘルプ"},
    {"two_sentences", "%@。%@"},
    {"needs_tool", "quenchlyツールが必要ですが、見つかりません"},
    {"needs_interpreter", "Node.jsが必要ですが、見つかりません"},
    {"scroll", "スクロール"},
    {"scroll_description", "パネルの続きを表示します"},
    {"ok", "OK"},
    {"cancel", "キャンセル"},
    {"updates_text",
     "%@でアップデートが公開されると、確認できるようになります。"
     "それまでは、新しいバージョンをhttps://%@/quenchly/から入手してください。"},
    {"updates_by_package_manager",
     "Quenchlyをパッケージとしてインストールした場合は、パッケージマネージャがアップデートします。"},
    {"support_email_copied", "サポート宛てのメールをコピーしました"},
    {"support_email_copied_text",
     "%@宛ての下書きがクリップボードにあります。"
     "Webメールにペーストするか、サポートフォームを開いてブラウザから送信してください。"},
    {"open_support_form", "サポートフォームを開く"},
    {"try_mail", "Mailを使ってみる"},
    {"uninstall_question", "Quenchlyをアンインストールしますか？"},
    {"uninstall_question_text",
     "「ログイン時に開く」をオフにし、バックグラウンドチェック（%@）を削除します。"
     "保存されたデータはこのMacに残ります。"
     "データは次の手順で削除できます。"},
    {"uninstall_button", "アンインストール"},
    {"remove_data_question", "保存されたデータも削除しますか？"},
    {"remove_data_question_text",
     "この手順は任意です。"
     "Quenchlyのデータフォルダ（保存された状態）をアーカイブしてから、使用中のコピーを削除します。"
     "後でインストールするときのためにデータを残すには、この手順をスキップしてください。"},
    {"keep_saved_data", "保存されたデータを残す"},
    {"remove_saved_data", "保存されたデータを削除"},
    {"trash_question", "Quenchlyをゴミ箱に入れますか？"},
    {"trash_question_text",
     "このMacからメニューバーアプリを削除します。"
     "後でQuenchlyをダウンロードして再インストールできます。"},
    {"move_to_trash", "ゴミ箱に入れる"},
    {"keep_app", "アプリを残す"},
    {"uninstalled", "Quenchlyをアンインストールしました"},
    {"uninstalled_text",
     "「ログイン時に開く」はオフになり、バックグラウンドチェックは削除されました。"
     "アプリはまだ残っています。"
     "用が済んだら終了するか、Finderからゴミ箱に入れてください。"},
    {"data_kept", "保存されたデータは削除されませんでした"},
    {"data_kept_outside", "データフォルダは、指定されたホームフォルダの外にあります。そのまま残しました。"},
    {"data_kept_root", "データフォルダがファイルシステムのルートになっています。そのまま残しました。"},
    {"data_kept_home", "データフォルダがホームフォルダ自体か、ホームフォルダを含むフォルダです。そのまま残しました。"},
    {"data_kept_no_folder", "データフォルダの場所にあるものはフォルダではありません。そのまま残しました。"},
    {"data_kept_disk", "データフォルダにディスクがマウントされています。そのまま残しました。"},
    {"data_kept_other_owner", "データフォルダの所有者は別のユーザです。そのまま残しました。"},
    {"last_check", "前回のチェック: %@"},
    {"eased_back_heading", "ペースを落とした対象"},
};

}  // namespace

constinit const std::span<const Entry> ja{entries};

}  // namespace quenchly::L10n::Tables
