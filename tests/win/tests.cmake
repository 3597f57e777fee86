quellix_win_test(find_os VERSIONS ${ALL_VERSIONS})
