// Ids of the tree tests' dialog and strings.
#pragma once

#define IDD_TREEHOST 500
#define IDC_TREE 1002
#define IDC_PLAINTREE 1003

#define IDS_PROJECT 600
#define IDS_SOURCES 601
#define IDS_MISSING 699 // no such string
