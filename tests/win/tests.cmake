quellix_win_test(find_os VERSIONS ${ALL_VERSIONS})
quellix_win_test(reg32 VERSIONS ${ALL_VERSIONS})
quellix_win_test(erro_handle DISPLAY)
quellix_win_test(no_wininet DISPLAY)
