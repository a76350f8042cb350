#pragma once

// Numbers of the form's resources and child windows; also read by the resource compiler.
#define IDI_HOST 1
#define IDR_ACCELERATORS 2

#define IDC_FILE_FILTER_LABEL 100
#define IDC_FILE_FILTER 101
#define IDC_PATTERNS_LABEL 102
#define IDC_PATTERNS 103
#define IDC_RECURSIVE 104
#define IDC_CHECKBOXES 105
#define IDC_ENUMERATE 106
#define IDC_REFRESH 107
#define IDC_EXPORT 108
#define IDC_COPY 109
#define IDC_TREE_LABEL 110
#define IDC_TREE 111
#define IDC_PANES_SPLITTER 112
#define IDC_LIST_LABEL 113
#define IDC_LIST 114
#define IDC_LOG_SPLITTER 115
#define IDC_LOG_LABEL 116
#define IDC_LOG 117
#define IDC_STATUS 118
#define IDC_LEAVE 119
#define IDC_DRAG_DROP 120
#define IDC_PATH_LABEL 121
#define IDC_PATH 122
