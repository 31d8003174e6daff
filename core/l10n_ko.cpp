#include "l10n_tables.h"

namespace quenchly::L10n::Tables {
namespace {

constexpr Entry entries[] = {
    {"protection_applies_to", "Protection 대상"},
    {"protection_targets", "Ollama, MLX, LM Studio headless, llama.cpp. 코드 편집기·브라우저·Mail은 제외."},
    {"only_listed_ai", "Ollama, MLX, LM Studio만."},
    {"live_data", "라이브 데이터"},
    {"check_for_updates", "업데이트 확인…"},
    {"report_problem", "문제 보고"},
    {"uninstall", "제거…"},
    {"quit", "Quenchly 종료"},
    {"updates_not_configured", "업데이트가 아직 설정되지 않음"},
    {"start_background_checks", "백그라운드 검사 시작"},
    {"unload_listed_ai", "대상 AI 언로드"},
    {"open_at_login", "로그인 시 열기"},
    {"auto_updates", "자동 업데이트 확인"},
    {"load", "부하"},
    {"swap", "스왑"},
    {"extra_memory_on_disk", "디스크 추가 메모리"},
    {"extra_on", "켜짐"},
    {"protection_on", "Protection 켜짐"},
    {"protection_off", "Protection 꺼짐"},
    {"checks_not_set_up", "검사 미설정"},
    {"retaining_memory_on", "메모리 유지: 켜짐"},
    {"retaining_memory", "메모리를 유지합니다."},
    {"checking_in_a_moment", "곧 검사합니다."},
    {"checking_now", "검사 중"},
    {"cadence_quiet", "약 1분마다 검사"},
    {"set_aside_heading", "제외 (%d)"},
    {"acknowledge", "확인"},
    {"clear_all_aside", "모두 해제"},
    {"off", "꺼짐"},
    {"acknowledging", "확인 중…"},
    {"clear_all_n", "모두 해제 (%d)"},
    {"open_at_login_on", "로그인 시 열기: 켜짐"},
    {"open_at_login_off", "로그인 시 열기: 꺼짐"},
    {"auto_updates_on", "자동 업데이트 확인: 켜짐"},
    {"auto_updates_off", "자동 업데이트 확인: 꺼짐"},
    {"copyright", "© 2026 Quenchly"},
    {"help_protection_on",
     "Mac의 부하가 높을 때 Protection은 대상 로컬 AI(Ollama, MLX, LM Studio headless, llama-server)를 그 자리에서 "
     "억제하여 Mac과 AI가 CPU를 두고 다투지 않게 합니다. "
     "모델은 로드된 채로 있고 메모리도 그대로 유지되며 작업은 그 자리에서 계속됩니다. "
     "Protection이 켜져 있는 동안에는 ‘메모리 유지’도 계속 켜져 있습니다. "
     "앱을 종료하지 않으며 RAM을 모두 비우지도 않습니다."},
    {"help_protection_off",
     "Mac이 과부하 상태여도 대상 AI가 최고 속도로 실행됩니다. "
     "최대 추론 처리량이 필요하고 화면 반응이 느려지거나 스왑이 늘어날 위험을 감수할 수 있을 때만 "
     "사용하십시오. "
     "Quenchly는 부하와 스왑 게이지를 계속 표시하지만, Mac을 쓰기 편하게 유지하기 위해 대상 AI의 속도를 "
     "조절하지는 않습니다."},
    {"help_checks_not_set_up",
     "메뉴 막대 아이콘은 실행 중이지만 부하와 스왑을 읽는 백그라운드 검사기는 아직 설치되지 않았습니다. "
     "지금 보이는 게이지는 마지막 스냅샷의 것이며 Protection의 실시간 판단이 아닙니다. "
     "‘백그라운드 검사 시작’을 클릭하여 설정을 마치십시오."},
    {"help_start_background_checks",
     "1분마다 부하와 스왑을 읽고 메뉴에 표시할 수 있는 상태를 기록하는 작은 백그라운드 검사기를 설치합니다. "
     "검사기가 없으면 게이지만 보이고 Protection의 실시간 판단은 보이지 않습니다. "
     "설정은 한 번만 하면 됩니다."},
    {"help_retaining_memory",
     "‘Protection 켜짐’ 상태에서는 로드된 모델이 메모리에 남아 있어 채팅 컨텍스트와 가중치를 언제든 쓸 수 "
     "있습니다. "
     "대상 AI를 그 자리에서 억제하므로 Mac과 AI가 CPU를 두고 다투지 않습니다. "
     "이 기능은 Protection이 켜져 있으면 항상 켜져 있으며, 따로 켜고 끄는 항목이 아닙니다."},
    {"help_unload_listed_ai",
     "Quenchly가 관리하는 로드된 로컬 AI 모델(Ollama, MLX 등)을 언로드하고 모델이 쓰던 RAM을 비웁니다. "
     "스왑 사용량이 높거나 macOS가 메모리에 대해 경고할 때 사용하십시오. "
     "다음 채팅에서 모델이 다시 로드됩니다."},
    {"help_extra_memory_status",
     "macOS가 진행 중인 작업을 담아 두기 위해 디스크 공간을 추가 메모리(스왑)로 사용하고 있습니다. "
     "이는 활성 상태 보기의 RAM 비율과는 다르며, 둘 다 동시에 높을 수 있습니다. "
     "작업은 계속 진행되고 있으며, 스왑이 위험 수준에 머물면 Quenchly가 대상 AI 언로드를 제안할 수 있습니다."},
    {"help_extra_memory_tip",
     "대상 AI에 아직 모델이 로드되어 있는데 디스크 추가 메모리 사용량이 높습니다. "
     "스왑이 더 늘어나기 전에 ‘대상 AI 언로드’로 RAM을 비우는 것을 고려하십시오. "
     "이 작업은 앱을 종료하지 않으며 Protection 설정도 변경하지 않습니다."},
    {"help_load_meter",
     "Mac의 부하를 CPU 코어 대비 백분율로 나타내며 실시간으로 측정합니다. "
     "높을수록 CPU 시간을 기다리는 스레드가 많다는 뜻입니다. "
     "활성 상태 보기의 프로세스별 CPU 비율이나 온도 측정값과는 다릅니다."},
    {"help_swap_meter",
     "디스크에 기록된 추가 메모리(스왑 파일 사용량)입니다. "
     "스왑 사용량이 높으면 macOS가 RAM 내용을 담아 두기 위해 디스크 공간을 빌려 쓰고 있다는 뜻입니다. "
     "이 막대가 길어지면 Mac이 무겁게 느껴지는 경우가 많으며, 이는 사용률을 표시하는 RAM 위젯과는 별개입니다."},
    {"help_protection_applies_to",
     "과부하일 때 Protection은 다음 대상 로컬 AI를 그 자리에서 억제합니다: Ollama, MLX, LM Studio headless, "
     "그리고 llama-server 또는 llama-cpp-server. "
     "사용자 지정 llama 바이너리는 프로세스가 이 이름들과 일치할 때만 포함됩니다."},
    {"help_set_aside",
     "루프 검사 후 Quenchly가 제외한 대상 AI입니다. "
     "‘확인’을 클릭할 때까지 최고 속도로 실행됩니다. "
     "‘확인’을 클릭하면, 과부하가 다시 발생할 경우 다음 검사에서 Protection이 대상 AI의 속도를 다시 늦출 수 있습니다."},
    {"help_acknowledge",
     "‘제외’에서 앱 하나를 빼서, 과부하가 걸릴 때 Protection이 대상 AI의 속도를 다시 늦출 수 있게 합니다. "
     "그 앱을 제한 없는 최고 속도로 실행할 필요가 없어졌을 때 사용하십시오. "
     "모델을 언로드하지 않으며 Protection 켜짐/꺼짐도 변경하지 않습니다."},
    {"help_clear_all_aside",
     "‘제외’의 모든 행에 ‘확인’을 한 번에 적용합니다. "
     "이전에 제외된 모든 앱에 다음 검사에서 Protection을 적용하고 싶을 때 사용하십시오. "
     "Protection 켜짐/꺼짐을 변경하지 않으며 어떤 소프트웨어도 제거하지 않습니다."},
    {"help_live_data",
     "이 Mac의 브라우저에서 라이브 대시보드를 엽니다. "
     "현재 부하, 스왑, Protection 상태, 최근 검사 기록을 표시합니다. "
     "읽기 전용 화면이므로 Protection 변경이나 언로드는 대시보드가 아니라 메뉴에서 하십시오."},
    {"help_check_for_updates",
     "Quenchly 업데이트 사이트에 더 새로운 빌드가 있는지 살펴봅니다. "
     "있으면 설치할지 여부를 직접 선택합니다. "
     "Quenchly가 사용자 모르게 업데이트되는 일은 결코 없습니다."},
    {"help_auto_updates",
     "켜짐 상태이면 Quenchly가 업데이트 사이트에 더 새로운 빌드가 있는지 주기적으로 확인합니다. "
     "있으면 설치할지 여부를 직접 선택하며, 백그라운드에서는 아무것도 설치되지 않습니다. "
     "이 백그라운드 확인을 중단하려면 꺼짐으로 바꾸십시오. "
     "‘업데이트 확인’은 그래도 언제든지 사용할 수 있습니다."},
    {"help_open_at_login",
     "Quenchly를 로그인 항목에 추가하여 재시동 후 메뉴 막대 아이콘이 나타나게 합니다. "
     "백그라운드 검사를 설치하지 않으며 Protection을 켜거나 끄지도 않습니다. "
     "Protection의 실시간 판단을 보려면 별도로 ‘백그라운드 검사 시작’이 필요합니다."},
    {"help_report_problem",
     "지원팀에 보낼 이메일을 이 Mac의 진단 정보(버전, 부하, 스왑, Protection 상태)가 미리 채워진 상태로 엽니다. "
     "Mail에서 ‘보내기’를 누르기 전에는 어떤 데이터도 전송되지 않습니다. "
     "무언가 잘못된 것 같거나 검사가 반복해서 실패할 때 사용하십시오."},
    {"help_uninstall",
     "이 Mac에서 백그라운드 검사기와 Quenchly 메뉴 막대 앱을 제거합니다. "
     "Ollama, MLX 또는 다른 AI 앱은 제거하지 않습니다."},
    {"help_quit",
     "메뉴 막대 앱만 종료합니다. "
     "백그라운드 검사가 설치되어 있으면 계속 실행되며 Protection도 설정된 대로 유지됩니다. "
     "응용 프로그램 폴더 또는 로그인 항목에서 Quenchly를 다시 여십시오."},
    {"turn_on", "켜기"},
    {"turn_off", "끄기"},
    {"install", "설치"},
    {"status", "상태"},
    {"extra_memory_tip", "추가 메모리 팁"},
    {"help", "도움말"},
    {"titled_help", "%@, 도움말"},
    {"two_sentences", "%@. %@"},
    {"needs_tool", "quenchly 도구가 필요하지만 찾을 수 없음"},
    {"needs_interpreter", "Node.js가 필요하지만 찾을 수 없음"},
    {"scroll", "스크롤"},
    {"scroll_description", "패널의 나머지 부분을 표시합니다"},
    {"ok", "확인"},
    {"cancel", "취소"},
    {"updates_text",
     "%@에 업데이트가 게시되면 확인할 수 있습니다. "
     "그전까지 새 버전은 https://%@/quenchly/에서 받을 수 있습니다."},
    {"updates_by_package_manager", "Quenchly를 패키지로 설치했다면 패키지 관리자가 업데이트합니다."},
    {"support_email_copied", "지원팀에 보낼 이메일이 복사됨"},
    {"support_email_copied_text",
     "%@ 주소로 보낼 초안이 클립보드에 있습니다. "
     "웹메일에 붙여넣거나, 지원 양식을 열어 브라우저에서 보내십시오."},
    {"open_support_form", "지원 양식 열기"},
    {"try_mail", "Mail 사용해 보기"},
    {"uninstall_question", "Quenchly를 제거하시겠습니까?"},
    {"uninstall_question_text",
     "‘로그인 시 열기’를 끄고 백그라운드 검사(%@)를 제거합니다. "
     "저장된 데이터는 이 Mac에 남으며 다음 단계에서 제거할 수 있습니다."},
    {"uninstall_button", "제거"},
    {"remove_data_question", "저장된 데이터도 제거하시겠습니까?"},
    {"remove_data_question_text",
     "이 단계는 선택 사항입니다. "
     "Quenchly 데이터 폴더(저장된 상태)를 아카이브한 다음 사용 중인 사본을 제거합니다. "
     "나중에 설치할 때를 위해 데이터를 남겨 두려면 이 단계를 건너뛰십시오."},
    {"keep_saved_data", "저장된 데이터 유지"},
    {"remove_saved_data", "저장된 데이터 제거"},
    {"trash_question", "Quenchly를 휴지통으로 이동하시겠습니까?"},
    {"trash_question_text",
     "이 Mac에서 메뉴 막대 앱을 제거합니다. "
     "나중에 Quenchly를 다운로드하여 다시 설치할 수 있습니다."},
    {"move_to_trash", "휴지통으로 이동"},
    {"keep_app", "앱 유지"},
    {"uninstalled", "Quenchly가 제거됨"},
    {"uninstalled_text",
     "‘로그인 시 열기’가 꺼지고 백그라운드 검사가 제거되었습니다. "
     "앱은 아직 남아 있습니다. "
     "작업을 마치면 종료하거나 Finder에서 휴지통으로 이동하십시오."},
    {"data_kept", "저장된 데이터를 제거하지 않았습니다"},
    {"data_kept_outside", "데이터 폴더가 지정된 홈 폴더 밖에 있습니다. 그대로 두었습니다."},
    {"data_kept_root", "데이터 폴더가 파일 시스템의 루트입니다. 그대로 두었습니다."},
    {"data_kept_home", "데이터 폴더가 홈 폴더이거나 홈 폴더를 포함하고 있습니다. 그대로 두었습니다."},
    {"data_kept_no_folder", "데이터 폴더 위치에 있는 것이 폴더가 아닙니다. 그대로 두었습니다."},
    {"data_kept_disk", "데이터 폴더에 디스크가 마운트되어 있습니다. 그대로 두었습니다."},
    {"data_kept_other_owner", "데이터 폴더의 소유자가 다른 사용자입니다. 그대로 두었습니다."},
    {"last_check", "마지막 검사: %@"},
    {"eased_back_heading", "속도를 늦춘 대상"},
};

}  // namespace

constinit const std::span<const Entry> ko{entries};

}  // namespace quenchly::L10n::Tables
