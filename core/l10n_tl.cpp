#include "l10n_tables.h"

namespace quenchly::L10n::Tables {
namespace {

constexpr Entry entries[] = {
    {"protection_applies_to", "Sakop ng Protection"},
    {"protection_targets", "Ollama, MLX, LM Studio headless, llama.cpp. Hindi code editors, browsers, o Mail."},
    {"only_listed_ai", "Ollama, MLX, LM Studio lang."},
    {"live_data", "Live data"},
    {"check_for_updates", "Tingnan ang Updates..."},
    {"report_problem", "I-report ang problema"},
    {"uninstall", "I-uninstall…"},
    {"quit", "Isara ang Quenchly"},
    {"updates_not_configured", "Hindi pa naka-set ang updates"},
    {"start_background_checks", "Simulan ang background checks"},
    {"unload_listed_ai", "I-unload ang listed AI"},
    {"open_at_login", "Buksan sa Login"},
    {"auto_updates", "Auto updates"},
    {"load", "load"},
    {"swap", "swap"},
    {"extra_memory_on_disk", "extra memory sa disk"},
    {"extra_on", "On"},
    {"protection_on", "Protection On"},
    {"protection_off", "Protection Off"},
    {"checks_not_set_up", "Hindi pa naka-set ang checks"},
    {"retaining_memory_on", "Retaining memory: On"},
    {"retaining_memory", "Retaining memory."},
    {"checking_in_a_moment", "Magche-check sandali."},
    {"checking_now", "Nagche-check ngayon"},
    {"cadence_quiet", "Tungkol sa bawat minuto ang checks"},
    {"set_aside_heading", "ITABI (%d)"},
    {"acknowledge", "Acknowledge"},
    {"clear_all_aside", "I-clear lahat"},
    {"off", "Off"},
    {"acknowledging", "Tina-acknowledge…"},
    {"clear_all_n", "I-clear lahat (%d)"},
    {"open_at_login_on", "Buksan sa Login: On"},
    {"open_at_login_off", "Buksan sa Login: Off"},
    {"auto_updates_on", "Auto updates: On"},
    {"auto_updates_off", "Auto updates: Off"},
    {"copyright", "© 2026 Quenchly"},
    {"help_protection_on",
     "Kapag mabigat ang load ng Mac mo, hino-hold ng Protection sa puwesto ang listed local AI (Ollama, MLX, "
     "LM Studio headless, llama-server) para hindi makipag-agawan ng CPU ang Mac sa AI. "
     "Nananatiling naka-load ang model; nananatili ang memory; tuloy ang trabaho sa puwesto nito. "
     "Nananatiling On ang “Retaining memory” habang On ang Protection. "
     "Hindi nito isinasara ang mga app at hindi nito binabakante ang lahat ng RAM."},
    {"help_protection_off",
     "Tumatakbo sa buong bilis ang listed AI kahit overloaded ang Mac. "
     "Gamitin lang ito kapag kailangan mo ang pinakamataas na inference throughput at tanggap mo ang panganib "
     "na bumigat ang UI o lumaki ang swap. "
     "Ipinapakita pa rin ng Quenchly ang mga meter ng load at swap, pero hindi nito kokontrolin ang bilis ng "
     "listed AI alang-alang sa maginhawang paggamit ng Mac."},
    {"help_checks_not_set_up",
     "Tumatakbo ang icon sa menu bar, pero hindi pa naka-install ang background checker na bumabasa ng load at "
     "swap. "
     "Ang nakikita mo ay mga meter mula sa huling snapshot, hindi ang mga live na desisyon ng Protection. "
     "I-click ang “Simulan ang background checks” para matapos ang setup."},
    {"help_start_background_checks",
     "Ini-install nito ang maliit na background checker na bumabasa ng load at swap bawat minuto at nagsusulat "
     "ng status na maipapakita ng menu. "
     "Kung wala ito, mga meter lang ang makikita mo, hindi ang mga live na desisyon ng Protection. "
     "Isang beses lang ang setup."},
    {"help_retaining_memory",
     "Kapag Protection On, nananatili sa memory ang mga naka-load na model para laging handa ang chat context "
     "at weights. "
     "Hino-hold sa puwesto ang listed AI para hindi makipag-agawan ng CPU ang Mac sa AI. "
     "Lagi itong naka-on kapag On ang Protection; hindi ito hiwalay na toggle."},
    {"help_unload_listed_ai",
     "Ina-unload nito ang mga naka-load na local AI model na pinamamahalaan ng Quenchly (Ollama, MLX, at mga "
     "katulad) at binabakante ang RAM na ginagamit ng mga ito. "
     "Gamitin kapag mataas ang swap o kapag nagbababala ang macOS tungkol sa memory. "
     "Ilo-load ulit ng susunod mong chat ang model."},
    {"help_extra_memory_status",
     "Ginagamit ng macOS ang espasyo sa disk bilang extra memory (swap) para paglagyan ng kasalukuyang "
     "ginagawa. "
     "Hindi ito kapareho ng porsiyento ng RAM sa Activity Monitor; puwedeng sabay na mataas ang dalawa. "
     "Umuusad pa rin ang trabaho; puwedeng magmungkahi ang Quenchly na i-unload ang listed AI kung mananatiling "
     "kritikal ang swap."},
    {"help_extra_memory_tip",
     "Mataas ang extra memory sa disk habang may mga naka-load pang model ang listed AI. "
     "Pag-isipang gamitin ang “I-unload ang listed AI” para mabakante ang RAM bago pa lalong lumaki ang swap. "
     "Hindi nito isinasara ang mga app at hindi nito binabago ang settings ng Protection."},
    {"help_load_meter",
     "Load ng Mac bilang porsiyento ng mga CPU core mo, na sina-sample nang live. "
     "Kapag mas mataas, mas maraming thread ang naghihintay ng oras sa CPU. "
     "Hindi ito kapareho ng porsiyento ng CPU ng bawat process sa Activity Monitor o ng reading ng temperatura."},
    {"help_swap_meter",
     "Extra memory na isinulat sa disk (nagamit na swap file). "
     "Kapag mataas ang swap, ibig sabihin ay nanghihiram ang macOS ng espasyo sa disk para paglagyan ng laman "
     "ng RAM. "
     "Kapag tumataas ang bar dito, kadalasang mabigat sa pakiramdam ang Mac; hiwalay ito sa RAM widget na "
     "nagpapakita kung ilang porsiyento na ang puno."},
    {"help_protection_applies_to",
     "Kapag overloaded, hino-hold ng Protection sa puwesto ang listed local AI: Ollama, MLX, "
     "LM Studio headless, at llama-server o llama-cpp-server. "
     "Kasama lang ang mga custom na llama binary kapag tumutugma ang process sa mga pangalang iyon."},
    {"help_set_aside",
     "Listed AI na itinabi ng Quenchly pagkatapos ng looper check. "
     "Tumatakbo ang mga ito sa buong bilis hangga’t hindi mo kini-click ang “Acknowledge”. "
     "Kapag na-click mo ito, puwede nang pabagalin ulit ng Protection ang listed AI sa susunod na check kung "
     "bumalik ang overload."},
    {"help_acknowledge",
     "Inaalis nito ang isang app sa “ITABI” para mapabagal ulit ng Protection ang listed AI kapag nag-overload. "
     "Gamitin ito kapag hindi mo na kailangang bigyan ang app na iyon ng buong bilis na walang pigil. "
     "Hindi nito ina-unload ang mga model at hindi nito binabago ang Protection On/Off."},
    {"help_clear_all_aside",
     "Sabay-sabay nitong ina-acknowledge ang bawat row sa “ITABI”. "
     "Gamitin kapag gusto mong masakop ng Protection sa susunod na check ang lahat ng app na dating itinabi. "
     "Hindi nito binabago ang Protection On/Off at wala itong ina-uninstall."},
    {"help_live_data",
     "Binubuksan nito ang live dashboard sa browser mo sa Mac na ito. "
     "Ipinapakita nito ang kasalukuyang load, swap, status ng Protection, at kamakailang history ng mga check. "
     "Para sa pagtingin lang ito; baguhin ang Protection o mag-unload mula sa menu, hindi sa dashboard."},
    {"help_check_for_updates",
     "Tinitingnan nito sa update site ng Quenchly kung may mas bagong build. "
     "Kung mayroon, ikaw ang magpapasya kung ii-install ito. "
     "Hindi kailanman palihim na nag-a-update ang Quenchly."},
    {"help_auto_updates",
     "Kapag On, pana-panahong tinitingnan ng Quenchly ang update site nito kung may mas bagong build. "
     "Kung mayroon, ikaw ang magpapasya kung ii-install ito; walang ini-install sa background. "
     "Gawing Off para ihinto ang mga check na iyon sa background. "
     "Gumagana pa rin anumang oras ang “Tingnan ang Updates”."},
    {"help_open_at_login",
     "Idinadagdag nito ang Quenchly sa login items mo para lumabas ang icon sa menu bar pagkatapos ng "
     "restart. "
     "Hindi ito nag-i-install ng background checks at hindi nito ino-on o ino-off ang Protection. "
     "Kailangan mo pa rin ang “Simulan ang background checks” para sa mga live na desisyon ng Protection."},
    {"help_report_problem",
     "Nagbubukas ito ng email para sa support na may laman nang diagnostic details mula sa Mac na ito (version, "
     "load, swap, estado ng Protection). "
     "Walang data na ipinapadala hangga’t hindi mo pinipindot ang Send sa Mail. "
     "Gamitin kapag may mukhang mali o kapag paulit-ulit na pumapalya ang isang check."},
    {"help_uninstall",
     "Inaalis nito sa Mac na ito ang background checker at ang Quenchly menu bar app. "
     "Hindi nito ina-uninstall ang Ollama, MLX, o iba pang AI app."},
    {"help_quit",
     "Ang menu bar app lang ang isinasara nito. "
     "Kung naka-install ang background checks, patuloy na tatakbo ang mga ito at mananatili ang Protection ayon "
     "sa pagkaka-set. "
     "Buksan ulit ang Quenchly mula sa Applications o login items."},
    {"turn_on", "I-on"},
    {"turn_off", "I-off"},
    {"install", "I-install"},
    {"status", "Status"},
    {"extra_memory_tip", "Tip sa extra memory"},
    {"help", "Tulong"},
    {"titled_help", "%@, Tulong"},
    {"two_sentences", "%@. %@"},
    {"needs_tool", "Kailangan ang quenchly tool, pero hindi ito nahanap"},
    {"needs_interpreter", "Kailangan ang Node.js, pero hindi ito nahanap"},
    {"scroll", "Mag-scroll"},
    {"scroll_description", "Ipinapakita ang natitirang bahagi ng panel"},
    {"ok", "OK"},
    {"cancel", "Kanselahin"},
    {"updates_text",
     "Gagana ang pagtingin kapag may na-publish nang updates sa %@. "
     "Hanggang sa panahong iyon, makukuha ang mga bagong version sa https://%@/quenchly/."},
    {"updates_by_package_manager",
     "Kung na-install ang Quenchly bilang package, ang package manager ang nag-a-update nito."},
    {"support_email_copied", "Na-copy na ang email para sa support"},
    {"support_email_copied_text",
     "Nasa clipboard mo na ang draft para sa %@. "
     "I-paste ito sa webmail, o buksan ang support form at magpadala mula sa browser."},
    {"open_support_form", "Buksan ang support form"},
    {"try_mail", "Subukan ang Mail"},
    {"uninstall_question", "I-uninstall ang Quenchly?"},
    {"uninstall_question_text",
     "Io-off nito ang “Buksan sa Login” at aalisin ang background check (%@). "
     "Mananatili sa Mac na ito ang naka-save mong data; "
     "puwede mo itong alisin sa susunod na hakbang."},
    {"uninstall_button", "I-uninstall"},
    {"remove_data_question", "Alisin din ang naka-save na data?"},
    {"remove_data_question_text",
     "Opsyonal ang hakbang na ito. "
     "Ina-archive nito ang data folder mo sa Quenchly (ang naka-save na estado nito), saka inaalis ang kopyang "
     "ginagamit. "
     "Laktawan ito para manatili ang data para sa susunod na pag-install."},
    {"keep_saved_data", "Panatilihin ang naka-save na data"},
    {"remove_saved_data", "Alisin ang naka-save na data"},
    {"trash_question", "Ilipat ang Quenchly sa Trash?"},
    {"trash_question_text",
     "Inaalis nito sa Mac na ito ang menu bar app. "
     "Puwede mo itong i-download at i-install ulit sa ibang pagkakataon."},
    {"move_to_trash", "Ilipat sa Trash"},
    {"keep_app", "Panatilihin ang app"},
    {"uninstalled", "Na-uninstall na ang Quenchly"},
    {"uninstalled_text",
     "Naka-off na ang “Buksan sa Login” at inalis na ang background check. "
     "Narito pa ang app; "
     "isara ito kapag tapos ka na, o ilipat ito sa Trash mula sa Finder."},
    {"data_kept", "Hindi inalis ang naka-save na data"},
    {"data_kept_outside", "Nasa labas ng ibinigay na home folder ang data folder. Iniwan ito nang walang binago."},
    {"data_kept_root", "Ang data folder ay ang root ng file system. Iniwan ito nang walang binago."},
    {"data_kept_home", "Home folder ang data folder o may laman itong home folder. Iniwan ito nang walang binago."},
    {"data_kept_no_folder", "Hindi folder ang nasa lugar ng data folder. Iniwan ito nang walang binago."},
    {"data_kept_disk", "May naka-mount na disk sa data folder. Iniwan ito nang walang binago."},
    {"data_kept_other_owner", "Pag-aari ng ibang user ang data folder. Iniwan ito nang walang binago."},
    {"last_check", "Huling check: %@"},
    {"eased_back_heading", "Pinabagal"},
};

}  // namespace

constinit const std::span<const Entry> tl{entries};

}  // namespace quenchly::L10n::Tables
