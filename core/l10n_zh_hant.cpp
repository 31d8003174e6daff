#include "l10n_tables.h"

namespace quenchly::L10n::Tables {
namespace {

constexpr Entry entries[] = {
    {"protection_applies_to", "Protection 適用於"},
    {"protection_targets", "Ollama、MLX、LM Studio headless、llama.cpp。不會作用於程式編輯器、瀏覽器或郵件。"},
    {"only_listed_ai", "僅 Ollama、MLX、LM Studio。"},
    {"live_data", "即時資料"},
    {"check_for_updates", "檢查更新…"},
    {"report_problem", "回報問題"},
    {"uninstall", "解除安裝…"},
    {"quit", "結束 Quenchly"},
    {"updates_not_configured", "尚未設定更新"},
    {"start_background_checks", "啟動背景檢查"},
    {"unload_listed_ai", "卸載所列 AI"},
    {"open_at_login", "登入時開啟"},
    {"auto_updates", "自動檢查更新"},
    {"load", "負載"},
    {"swap", "交換"},
    {"extra_memory_on_disk", "磁碟額外記憶體"},
    {"extra_on", "開"},
    {"protection_on", "Protection 開"},
    {"protection_off", "Protection 關"},
    {"checks_not_set_up", "檢查未設定"},
    {"retaining_memory_on", "保留記憶體：開"},
    {"retaining_memory", "正在保留記憶體。"},
    {"checking_in_a_moment", "即將檢查。"},
    {"checking_now", "正在檢查"},
    {"cadence_quiet", "大約每分鐘檢查一次"},
    {"set_aside_heading", "暫存 (%d)"},
    {"acknowledge", "確認"},
    {"clear_all_aside", "全部清除"},
    {"off", "關"},
    {"acknowledging", "正在確認…"},
    {"clear_all_n", "全部清除 (%d)"},
    {"open_at_login_on", "登入時開啟：開"},
    {"open_at_login_off", "登入時開啟：關"},
    {"auto_updates_on", "自動檢查更新：開"},
    {"auto_updates_off", "自動檢查更新：關"},
    {"copyright", "© 2026 Quenchly"},
    {"help_protection_on",
     "當 Mac 負載很高時，Protection 會將所列本機 AI（Ollama、MLX、LM Studio headless、llama-server）就地限制，"
     "避免這台 Mac 與 AI 爭搶 CPU。"
     "模型維持載入，記憶體繼續保留，工作就地繼續進行。"
     "Protection 開啟期間，「保留記憶體」也會一直是「開」。"
     "它不會結束 App，也不會釋放全部 RAM。"},
    {"help_protection_off",
     "即使 Mac 過載，所列 AI 也會全速執行。"
     "只有在你需要最大的推論吞吐量，並能接受介面變得遲鈍或交換用量增加的風險時，才使用此項。"
     "Quenchly 仍會顯示負載和交換指示條，但不會為了讓 Mac 保持好用而調節所列 AI 的速度。"},
    {"help_checks_not_set_up",
     "選單列圖示正在執行，但讀取負載和交換用量的背景檢查程式尚未安裝。"
     "你看到的指示條來自上次快照，而不是 Protection 的即時判斷。"
     "請按一下「啟動背景檢查」來完成設定。"},
    {"help_start_background_checks",
     "安裝小巧的背景檢查程式，它每分鐘讀取負載和交換用量，並寫入選單可以顯示的狀態。"
     "沒有它，你只會看到指示條，看不到 Protection 的即時判斷。"
     "只需設定一次。"},
    {"help_retaining_memory",
     "「Protection 開」時，已載入的模型會留在記憶體中，讓聊天上下文和權重隨時可用。"
     "所列 AI 會被就地限制，避免這台 Mac 與 AI 爭搶 CPU。"
     "只要 Protection 為「開」，此項就一直開啟，並非獨立的開關。"},
    {"help_unload_listed_ai",
     "卸載由 Quenchly 管理的已載入本機 AI 模型（Ollama、MLX 等），並釋放它們佔用的 RAM。"
     "當交換用量偏高或 macOS 發出記憶體警告時使用。"
     "下次聊天時會重新載入模型。"},
    {"help_extra_memory_status",
     "macOS 正在將磁碟空間當作額外記憶體（交換），用來存放進行中的工作。"
     "這與「活動監視器」中的 RAM 百分比不同；兩者可能同時偏高。"
     "工作仍在繼續；如果交換用量持續處於危險水準，Quenchly 可能會建議卸載所列 AI。"},
    {"help_extra_memory_tip",
     "磁碟額外記憶體用量很高，而所列 AI 仍有模型處於載入狀態。"
     "可以考慮使用「卸載所列 AI」，在交換用量進一步增加之前釋放 RAM。"
     "此操作不會結束 App，也不會更改 Protection 設定。"},
    {"help_load_meter",
     "以 CPU 核心為基準的 Mac 負載百分比，即時取樣。"
     "數值越高，表示等待 CPU 時間的執行緒越多。"
     "這與「活動監視器」中各程序的 CPU 百分比或溫度讀數不同。"},
    {"help_swap_meter",
     "寫入磁碟的額外記憶體（交換檔用量）。"
     "交換用量偏高表示 macOS 正在借用磁碟空間來存放 RAM 的內容。"
     "此處的指示條變長時，Mac 用起來往往會變得遲鈍；它與顯示佔用百分比的 RAM 小工具是兩回事。"},
    {"help_protection_applies_to",
     "過載時，Protection 會就地限制所列本機 AI：Ollama、MLX、LM Studio headless，以及 llama-server 或 "
     "llama-cpp-server。"
     "自訂的 llama 二進位檔只有在程序符合這些名稱時才包含在內。"},
    {"help_set_aside",
     "迴圈檢查後被 Quenchly 暫存的所列 AI。"
     "在你「確認」之前，它們會全速執行。"
     "「確認」後，如果再次過載，Protection 可以在下次檢查時重新放慢所列 AI 的速度。"},
    {"help_acknowledge",
     "從「暫存」中移除一個 App，讓 Protection 在過載時能夠重新放慢所列 AI 的速度。"
     "當你不再需要讓該 App 不受限制地全速執行時使用。"
     "它不會卸載模型，也不會更改 Protection 的開/關狀態。"},
    {"help_clear_all_aside",
     "一次確認「暫存」中的所有列。"
     "當你希望 Protection 從下次檢查起適用於先前暫存的所有 App 時使用。"
     "不會更改 Protection 的開/關狀態，也不會解除安裝任何項目。"},
    {"help_live_data",
     "在這台 Mac 的瀏覽器中開啟即時儀表板。"
     "顯示目前的負載、交換用量、Protection 狀態和近期檢查紀錄。"
     "僅供檢視；如需更改 Protection 或卸載模型，請在選單中操作，而不是在儀表板中。"},
    {"help_check_for_updates",
     "在 Quenchly 的更新網站上查看是否有較新的組建版本。"
     "如果有，由你選擇是否安裝。"
     "Quenchly 絕不會在你不知情時更新。"},
    {"help_auto_updates",
     "設為「開」時，Quenchly 會定期在其更新網站檢查是否有較新的組建版本。"
     "如果有，由你選擇是否安裝；不會在背景安裝任何內容。"
     "設為「關」可停止這類背景更新檢查。"
     "「檢查更新」仍可隨時使用。"},
    {"help_open_at_login",
     "將 Quenchly 加入登入項目，讓選單列圖示在重新開機後出現。"
     "不會安裝背景檢查，也不會開啟或關閉 Protection。"
     "要取得 Protection 的即時判斷，仍需「啟動背景檢查」。"},
    {"help_report_problem",
     "開啟一封寫給支援團隊的預填郵件，其中包含這台 Mac 的診斷資訊（版本、負載、交換用量、Protection 狀態）。"
     "在「郵件」中按下「傳送」之前，不會送出任何資料。"
     "當情況看起來不對或檢查一再失敗時使用。"},
    {"help_uninstall",
     "從這台 Mac 移除背景檢查程式和 Quenchly 選單列 App。"
     "不會解除安裝 Ollama、MLX 或其他 AI App。"},
    {"help_quit",
     "只會結束選單列 App。"
     "如果已安裝背景檢查，它們會繼續執行，Protection 也會維持原有設定。"
     "可從「應用程式」或登入項目重新開啟 Quenchly。"},
    {"turn_on", "開啟"},
    {"turn_off", "關閉"},
    {"install", "安裝"},
    {"status", "狀態"},
    {"extra_memory_tip", "額外記憶體提示"},
    {"help", "輔助說明"},
    {"titled_help", "%@，輔助說明"},
    {"two_sentences", "%@。%@"},
    {"needs_tool", "需要 quenchly 工具，但找不到"},
    {"needs_interpreter", "需要 Node.js，但找不到"},
    {"scroll", "捲動"},
    {"scroll_description", "顯示面板的其餘部分"},
    {"ok", "好"},
    {"cancel", "取消"},
    {"updates_text", "%@ 發布更新後即可檢查。在此之前，請從 https://%@/quenchly/ 取得新版本。"},
    {"updates_by_package_manager", "如果 Quenchly 是以套件形式安裝的，套件管理程式會更新它。"},
    {"support_email_copied", "已拷貝支援郵件"},
    {"support_email_copied_text", "寫給 %@ 的草稿已在剪貼板中。請貼到網頁郵件，或開啟支援表單並從瀏覽器傳送。"},
    {"open_support_form", "開啟支援表單"},
    {"try_mail", "嘗試用「郵件」傳送"},
    {"uninstall_question", "要解除安裝 Quenchly 嗎？"},
    {"uninstall_question_text",
     "這會關閉「登入時開啟」並移除背景檢查（%@）。"
     "已儲存的資料會留在這台 Mac 上；你可以在下一步中移除。"},
    {"uninstall_button", "解除安裝"},
    {"remove_data_question", "要同時移除已儲存的資料嗎？"},
    {"remove_data_question_text",
     "此步驟可略過。"
     "它會先將你的 Quenchly 資料檔案夾（已儲存的狀態）封存，再移除使用中的副本。"
     "如需保留資料供日後安裝時使用，請略過此步驟。"},
    {"keep_saved_data", "保留已儲存的資料"},
    {"remove_saved_data", "移除已儲存的資料"},
    {"trash_question", "要將 Quenchly 移到垃圾桶嗎？"},
    {"trash_question_text", "從這台 Mac 移除選單列 App。日後可以下載 Quenchly 重新安裝。"},
    {"move_to_trash", "移到垃圾桶"},
    {"keep_app", "保留 App"},
    {"uninstalled", "已解除安裝 Quenchly"},
    {"uninstalled_text",
     "「登入時開啟」已關閉，背景檢查已移除。"
     "App 仍在這裡；用完後請結束，或從 Finder 將其移到垃圾桶。"},
    {"data_kept", "未移除已儲存的資料"},
    {"data_kept_outside", "資料檔案夾位於指定的個人專屬檔案夾之外，已原樣保留。"},
    {"data_kept_root", "資料檔案夾是檔案系統的根目錄，已原樣保留。"},
    {"data_kept_home", "資料檔案夾是個人專屬檔案夾，或包含個人專屬檔案夾，已原樣保留。"},
    {"data_kept_no_folder", "資料檔案夾所在位置的項目不是檔案夾，已原樣保留。"},
    {"data_kept_disk", "有磁碟裝載在資料檔案夾上，檔案夾已原樣保留。"},
    {"data_kept_other_owner", "資料檔案夾屬於其他使用者，已原樣保留。"},
    {"last_check", "上次檢查：%@"},
    {"eased_back_heading", "已放慢"},
};

}  // namespace

constinit const std::span<const Entry> zhHant{entries};

}  // namespace quenchly::L10n::Tables
