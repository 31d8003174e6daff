#include "l10n_tables.h"

namespace quenchly::L10n::Tables {
namespace {

constexpr Entry entries[] = {
    {"protection_applies_to", "Protection 适用于"},
    {"protection_targets", "Ollama、MLX、LM Studio headless、llama.cpp。不会作用于代码编辑器、浏览器或邮件。"},
    {"only_listed_ai", "仅 Ollama、MLX、LM Studio。"},
    {"live_data", "实时数据"},
    {"check_for_updates", "检查更新…"},
    {"report_problem", "报告问题"},
    {"uninstall", "卸载…"},
    {"quit", "退出 Quenchly"},
    {"updates_not_configured", "尚未配置更新"},
    {"start_background_checks", "启动后台检查"},
    {"unload_listed_ai", "卸载所列 AI"},
    {"open_at_login", "登录时打开"},
    {"auto_updates", "自动检查更新"},
    {"load", "负载"},
    {"swap", "交换"},
    {"extra_memory_on_disk", "磁盘额外内存"},
    {"extra_on", "开"},
    {"protection_on", "Protection 开"},
    {"protection_off", "Protection 关"},
    {"checks_not_set_up", "检查未设置"},
    {"retaining_memory_on", "保留内存：开"},
    {"retaining_memory", "正在保留内存。"},
    {"checking_in_a_moment", "即将检查。"},
    {"checking_now", "正在检查"},
    {"cadence_quiet", "大约每分钟检查一次"},
    {"set_aside_heading", "暂存 (%d)"},
    {"acknowledge", "确认"},
    {"clear_all_aside", "全部清除"},
    {"off", "关"},
    {"acknowledging", "正在确认…"},
    {"clear_all_n", "全部清除 (%d)"},
    {"open_at_login_on", "登录时打开：开"},
    {"open_at_login_off", "登录时打开：关"},
    {"auto_updates_on", "自动检查更新：开"},
    {"auto_updates_off", "自动检查更新：关"},
    {"copyright", "© 2026 Quenchly"},
    {"help_protection_on",
     "当 Mac 负载很高时，Protection 会将所列本地 AI（Ollama、MLX、LM Studio headless、llama-server）就地限制，"
     "避免这台 Mac 与 AI 争抢 CPU。"
     "模型保持加载，内存继续保留，工作就地继续进行。"
     "Protection 开启期间，“保留内存”也始终为“开”。"
     "它不会退出应用，也不会释放全部 RAM。"},
    {"help_protection_off",
     "即使 Mac 过载，所列 AI 也会全速运行。"
     "仅当你需要最大的推理吞吐量，并能接受界面卡顿或交换用量增长的风险时，才使用此项。"
     "Quenchly 仍会显示负载和交换指示条，但不会为了让 Mac 保持好用而调节所列 AI 的速度。"},
    {"help_checks_not_set_up",
     "菜单栏图标正在运行，但读取负载和交换用量的后台检查程序尚未安装。"
     "你看到的指示条来自上次快照，而不是 Protection 的实时判断。"
     "请点按“启动后台检查”以完成设置。"},
    {"help_start_background_checks",
     "安装小巧的后台检查程序，它每分钟读取负载和交换用量，并写入菜单可以显示的状态。"
     "没有它，你只能看到指示条，看不到 Protection 的实时判断。"
     "只需设置一次。"},
    {"help_retaining_memory",
     "“Protection 开”时，已加载的模型会留在内存中，让聊天上下文和权重随时可用。"
     "所列 AI 会被就地限制，避免这台 Mac 与 AI 争抢 CPU。"
     "只要 Protection 为“开”，此项就始终开启，并非单独的开关。"},
    {"help_unload_listed_ai",
     "从内存中卸载由 Quenchly 管理的已加载本地 AI 模型（Ollama、MLX 等），并释放它们占用的 RAM。"
     "当交换用量偏高或 macOS 发出内存警告时使用。"
     "下次聊天时会重新加载模型。"},
    {"help_extra_memory_status",
     "macOS 正在将磁盘空间用作额外内存（交换），以存放进行中的工作。"
     "这与“活动监视器”中的 RAM 百分比不是一回事；两者可能同时偏高。"
     "工作仍在继续；如果交换用量持续处于危险水平，Quenchly 可能会建议卸载所列 AI。"},
    {"help_extra_memory_tip",
     "磁盘额外内存用量很高，而所列 AI 仍有模型处于加载状态。"
     "可以考虑使用“卸载所列 AI”，在交换用量进一步增长之前释放 RAM。"
     "此操作不会退出应用，也不会更改 Protection 设置。"},
    {"help_load_meter",
     "以 CPU 核心为基准的 Mac 负载百分比，实时采样。"
     "数值越高，表示等待 CPU 时间的线程越多。"
     "这与“活动监视器”中各进程的 CPU 百分比或温度读数不是一回事。"},
    {"help_swap_meter",
     "写入磁盘的额外内存（交换文件用量）。"
     "交换用量偏高说明 macOS 正在借用磁盘空间来存放 RAM 的内容。"
     "此处的指示条变长时，Mac 用起来往往会变卡；它与显示占用百分比的 RAM 小组件是两回事。"},
    {"help_protection_applies_to",
     "过载时，Protection 会就地限制所列本地 AI：Ollama、MLX、LM Studio headless，以及 llama-server 或 "
     "llama-cpp-server。"
     "自定义 llama 二进制文件仅在进程与这些名称匹配时才包含在内。"},
    {"help_set_aside",
     "循环检查后被 Quenchly 暂存的所列 AI。"
     "在你“确认”之前，它们会全速运行。"
     "“确认”后，如果再次过载，Protection 可以在下次检查时重新放慢所列 AI 的速度。"},
    {"help_acknowledge",
     "从“暂存”中移除一个应用，让 Protection 在过载时能够重新放慢所列 AI 的速度。"
     "当你不再需要让该应用不受限制地全速运行时使用。"
     "它不会卸载模型，也不会更改 Protection 的开/关状态。"},
    {"help_clear_all_aside",
     "一次性确认“暂存”中的所有行。"
     "当你希望 Protection 从下次检查起适用于之前暂存的所有应用时使用。"
     "不会更改 Protection 的开/关状态，也不会卸载任何软件。"},
    {"help_live_data",
     "在这台 Mac 的浏览器中打开实时仪表盘。"
     "显示当前负载、交换用量、Protection 状态和近期检查记录。"
     "仅供查看；如需更改 Protection 或卸载模型，请在菜单中操作，而不是在仪表盘中。"},
    {"help_check_for_updates",
     "在 Quenchly 的更新网站上查看是否有较新的构建版本。"
     "如果有，由你选择是否安装。"
     "Quenchly 绝不会静默更新。"},
    {"help_auto_updates",
     "设为“开”时，Quenchly 会定期在其更新网站检查是否有较新的构建版本。"
     "如果有，由你选择是否安装；不会在后台安装任何内容。"
     "设为“关”可停止这类后台更新检查。"
     "“检查更新”仍可随时使用。"},
    {"help_open_at_login",
     "将 Quenchly 添加到登录项，让菜单栏图标在重新启动后出现。"
     "不会安装后台检查，也不会开启或关闭 Protection。"
     "要获得 Protection 的实时判断，仍需“启动后台检查”。"},
    {"help_report_problem",
     "打开一封写给支持团队的预填邮件，其中包含这台 Mac 的诊断信息（版本、负载、交换用量、Protection 状态）。"
     "在“邮件”中点按“发送”之前，不会发送任何数据。"
     "当情况看起来不对或检查反复失败时使用。"},
    {"help_uninstall",
     "从这台 Mac 移除后台检查程序和 Quenchly 菜单栏应用。"
     "不会卸载 Ollama、MLX 或其他 AI 应用。"},
    {"help_quit",
     "仅退出菜单栏应用。"
     "如果已安装后台检查，它们会继续运行，Protection 也会保持原有设置。"
     "可从“应用程序”文件夹或登录项重新打开 Quenchly。"},
    {"turn_on", "开启"},
    {"turn_off", "关闭"},
    {"install", "安装"},
    {"status", "状态"},
    {"extra_memory_tip", "额外内存提示"},
    {"help", "帮助"},
    {"titled_help", "%@，帮助"},
    {"two_sentences", "%@。%@"},
    {"needs_tool", "需要 quenchly 工具，但未找到"},
    {"needs_interpreter", "需要 Node.js，但未找到"},
    {"scroll", "滚动"},
    {"scroll_description", "显示面板的其余部分"},
    {"ok", "好"},
    {"cancel", "取消"},
    {"updates_text", "%@ 发布更新后即可检查。在此之前，请从 https://%@/quenchly/ 获取新版本。"},
    {"updates_by_package_manager", "如果 Quenchly 是以软件包形式安装的，软件包管理器会更新它。"},
    {"support_email_copied", "已拷贝支持邮件"},
    {"support_email_copied_text", "写给 %@ 的草稿已在剪贴板中。请粘贴到网页邮箱，或打开支持表单并从浏览器发送。"},
    {"open_support_form", "打开支持表单"},
    {"try_mail", "尝试用“邮件”发送"},
    {"uninstall_question", "要卸载 Quenchly 吗？"},
    {"uninstall_question_text",
     "这会关闭“登录时打开”并移除后台检查（%@）。"
     "已保存的数据会留在这台 Mac 上；你可以在下一步中移除。"},
    {"uninstall_button", "卸载"},
    {"remove_data_question", "要同时移除已保存的数据吗？"},
    {"remove_data_question_text",
     "此步骤可选。"
     "它会先将你的 Quenchly 数据文件夹（已保存的状态）归档，再移除使用中的副本。"
     "如需保留数据供以后安装时使用，请跳过此步骤。"},
    {"keep_saved_data", "保留已保存的数据"},
    {"remove_saved_data", "移除已保存的数据"},
    {"trash_question", "要将 Quenchly 移到废纸篓吗？"},
    {"trash_question_text", "从这台 Mac 移除菜单栏应用。以后可以下载 Quenchly 重新安装。"},
    {"move_to_trash", "移到废纸篓"},
    {"keep_app", "保留应用"},
    {"uninstalled", "已卸载 Quenchly"},
    {"uninstalled_text",
     "“登录时打开”已关闭，后台检查已移除。"
     "应用仍在这里；用完后请退出，或从“访达”将其移到废纸篓。"},
    {"data_kept", "未移除已保存的数据"},
    {"data_kept_outside", "数据文件夹位于指定的个人文件夹之外，已原样保留。"},
    {"data_kept_root", "数据文件夹是文件系统的根目录，已原样保留。"},
    {"data_kept_home", "数据文件夹是个人文件夹，或包含个人文件夹，已原样保留。"},
    {"data_kept_no_folder", "数据文件夹所在位置的项目不是文件夹，已原样保留。"},
    {"data_kept_disk", "有磁盘装载在数据文件夹上，文件夹已原样保留。"},
    {"data_kept_other_owner", "数据文件夹属于其他用户，已原样保留。"},
    {"last_check", "上次检查：%@"},
    {"eased_back_heading", "已放慢"},
};

}  // namespace

constinit const std::span<const Entry> zhHans{entries};

}  // namespace quenchly::L10n::Tables
