#include "l10n_tables.h"

namespace quenchly::L10n::Tables {
namespace {

constexpr Entry entries[] = {
    {"protection_applies_to", "Protection applies to"},
    {"protection_targets", "Ollama, MLX, LM Studio headless, llama.cpp. Never code editors, browsers, or Mail."},
    {"only_listed_ai", "Only Ollama, MLX, LM Studio."},
    {"live_data", "Live data"},
    {"check_for_updates", "Check for Updates..."},
    {"report_problem", "Report a problem"},
    {"uninstall", "Uninstall…"},
    {"quit", "Quit Quenchly"},
    {"updates_not_configured", "Updates not configured yet"},
    {"start_background_checks", "Start background checks"},
    {"unload_listed_ai", "Unload listed AI"},
    {"open_at_login", "Open at Login"},
    {"auto_updates", "Auto updates"},
    {"load", "load"},
    {"swap", "swap"},
    {"extra_memory_on_disk", "extra memory on disk"},
    {"extra_on", "On"},
    {"protection_on", "Protection On"},
    {"protection_off", "Protection Off"},
    {"checks_not_set_up", "Checks not set up"},
    {"retaining_memory_on", "Retaining memory: On"},
    {"retaining_memory", "Retaining memory."},
    {"checking_in_a_moment", "Checking in a moment."},
    {"checking_now", "Checking now"},
    {"cadence_quiet", "Checks about every minute"},
    {"set_aside_heading", "SET ASIDE (%d)"},
    {"acknowledge", "Acknowledge"},
    {"clear_all_aside", "Clear all"},
    {"off", "Off"},
    {"acknowledging", "Acknowledging…"},
    {"clear_all_n", "Clear all (%d)"},
    {"open_at_login_on", "Open at Login: On"},
    {"open_at_login_off", "Open at Login: Off"},
    {"auto_updates_on", "Auto updates: On"},
    {"auto_updates_off", "Auto updates: Off"},
    {"copyright", "© 2026 Quenchly"},
    {"help_protection_on",
     "When your Mac is under heavy load, Protection holds listed local AI (Ollama, MLX, LM Studio headless, "
     "llama-server) in place so the machine is not fighting the AI for CPU. "
     "The model stays loaded; memory stays; work continues in place. "
     "Retaining memory stays On with Protection. "
     "It does not quit apps or free all RAM."},
    {"help_protection_off",
     "Listed AI runs at full speed even when the Mac is overloaded. "
     "Use this only when you need maximum inference throughput and accept the risk of a heavy UI or swap "
     "growth. "
     "Quenchly still shows load and swap meters but will not pace listed AI for Mac usability."},
    {"help_checks_not_set_up",
     "The menu bar icon is running, but the background checker that reads load and swap is not installed yet. "
     "You see meters from the last snapshot, not live Protect decisions. "
     "Tap Start background checks to finish setup."},
    {"help_start_background_checks",
     "Installs the small background checker that reads load and swap every minute and writes status the menu "
     "can show. "
     "Without it you only see meters, not live Protect decisions. "
     "One-time setup."},
    {"help_retaining_memory",
     "Under Protection On, loaded models stay in memory so chat context and weights stay ready. "
     "Listed AI is held in place so the machine is not fighting the AI for CPU. "
     "This is always on when Protection is On, not a separate toggle."},
    {"help_unload_listed_ai",
     "Unloads loaded local AI models Quenchly manages (Ollama, MLX, and similar) and frees the RAM they were "
     "using. "
     "Use when swap is high or macOS warns about memory. "
     "Your next chat will reload the model."},
    {"help_extra_memory_status",
     "macOS is using disk space as extra memory (swap) to hold work in progress. "
     "This is not the same as the RAM percent in Activity Monitor; both can be high at once. "
     "Work is still progressing; Quenchly may suggest unloading listed AI if swap stays critical."},
    {"help_extra_memory_tip",
     "Extra memory on disk is high while listed AI still has models loaded. "
     "Consider Unload listed AI to free RAM before swap grows further. "
     "This does not quit apps or change Protection settings."},
    {"help_load_meter",
     "Machine load as a percent of your CPU cores, sampled live. "
     "Higher means more threads are waiting for CPU time. "
     "This is not the same as Activity Monitor per-process CPU percent or a temperature reading."},
    {"help_swap_meter",
     "Extra memory written to disk (swap file used). "
     "High swap means macOS is borrowing disk space to hold RAM contents. "
     "A rising bar here often means the Mac feels heavy; it is separate from the RAM widget showing percent "
     "full."},
    {"help_protection_applies_to",
     "Under overload, Protection holds listed local AI in place: Ollama, MLX, LM Studio headless, and "
     "llama-server or llama-cpp-server. "
     "Custom llama binaries are included only when the process matches those names."},
    {"help_set_aside",
     "Listed AI Quenchly set aside after a looper check. "
     "They run at full speed until you Acknowledge. "
     "Acknowledge lets Protection ease listed AI again on the next check if overload returns."},
    {"help_acknowledge",
     "Removes one app from SET ASIDE so Protection can ease listed AI again when overload hits. "
     "Use this when you are done giving that app full unchecked speed. "
     "It does not unload models or change Protection On/Off."},
    {"help_clear_all_aside",
     "Acknowledges every row in SET ASIDE at once. "
     "Use when you want Protection to apply to all previously set-aside apps on the next check. "
     "Does not change Protection On/Off or uninstall anything."},
    {"help_live_data",
     "Opens the live dashboard in your browser on this Mac. "
     "Shows current load, swap, Protection status, and recent check history. "
     "Read-only view; change Protection or unload from the menu, not the dashboard."},
    {"help_check_for_updates",
     "Looks on Quenchly’s update site for a newer build. "
     "If one exists, you choose whether to install. "
     "Quenchly never updates silently."},
    {"help_auto_updates",
     "When On, Quenchly periodically checks its update site for a newer build. "
     "If one exists, you choose whether to install; nothing installs in the background. "
     "Turn Off to stop those background checks. "
     "Check for Updates still works anytime."},
    {"help_open_at_login",
     "Adds Quenchly to your login items so the menu bar icon appears after restart. "
     "Does not install background checks or turn Protection on or off. "
     "You still need Start background checks for live Protect decisions."},
    {"help_report_problem",
     "Opens a pre-filled email to support with diagnostic details from this Mac (version, load, swap, "
     "Protection state). "
     "No data is sent until you hit Send in Mail. "
     "Use when something looks wrong or a check fails repeatedly."},
    {"help_uninstall",
     "Removes the background checker and the Quenchly menu bar app from this Mac. "
     "Does not uninstall Ollama, MLX, or other AI apps."},
    {"help_quit",
     "Closes the menu bar app only. "
     "If background checks are installed, they keep running and Protection stays as configured. "
     "Reopen Quenchly from Applications or login items."},
    {"turn_on", "Turn On"},
    {"turn_off", "Turn Off"},
    {"install", "Install"},
    {"status", "Status"},
    {"extra_memory_tip", "Extra memory tip"},
    {"help", "Help"},
    {"titled_help", "%@, Help"},
    {"two_sentences", "%@. %@"},
    {"needs_tool", "Needs the quenchly tool, which was not found"},
    {"needs_interpreter", "Needs Node.js, which was not found"},
    {"scroll", "Scroll"},
    {"scroll_description", "Shows the rest of the panel"},
    {"ok", "OK"},
    {"cancel", "Cancel"},
    {"updates_text",
     "Checking will work once updates are published on %@. "
     "Until then, new versions come from https://%@/quenchly/."},
    {"updates_by_package_manager", "If Quenchly came as a package, the package manager updates it."},
    {"support_email_copied", "Support email copied"},
    {"support_email_copied_text",
     "A draft for %@ is on your clipboard. "
     "Paste into webmail, or open the support form and send from the browser."},
    {"open_support_form", "Open support form"},
    {"try_mail", "Try Mail"},
    {"uninstall_question", "Uninstall Quenchly?"},
    {"uninstall_question_text",
     "This turns off Open at Login and removes the background check (%@). "
     "Your saved data stays on this Mac; "
     "you can remove it in the next step."},
    {"uninstall_button", "Uninstall"},
    {"remove_data_question", "Remove saved data too?"},
    {"remove_data_question_text",
     "This step is optional. "
     "It archives your Quenchly data folder (its saved state) and then removes the live copy. "
     "Skip it to keep the data for a later install."},
    {"keep_saved_data", "Keep saved data"},
    {"remove_saved_data", "Remove saved data"},
    {"trash_question", "Move Quenchly to the Trash?"},
    {"trash_question_text",
     "Removes the menu-bar app from this Mac. "
     "You can reinstall from the Quenchly download later."},
    {"move_to_trash", "Move to Trash"},
    {"keep_app", "Keep app"},
    {"uninstalled", "Quenchly uninstalled"},
    {"uninstalled_text",
     "Open at Login is off and the background check is removed. "
     "The app is still here; "
     "Quit when you are done, or Move to Trash from Finder."},
    {"data_kept", "Saved data was not removed"},
    {"data_kept_outside", "The data folder lies outside of the home folder that was given. It was left as it is."},
    {"data_kept_root", "The data folder is the root of the file system. It was left as it is."},
    {"data_kept_home", "The data folder is a home folder or holds one. It was left as it is."},
    {"data_kept_no_folder", "What is in the data folder’s place is no folder. It was left as it is."},
    {"data_kept_disk", "A disk is mounted at the data folder. It was left as it is."},
    {"data_kept_other_owner", "The data folder belongs to another user. It was left as it is."},
    {"last_check", "Last check %@"},
    {"eased_back_heading", "Eased back"},
};

}  // namespace

constinit const std::span<const Entry> en{entries};

}  // namespace quenchly::L10n::Tables
