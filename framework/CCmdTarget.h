// Message maps and command routing.
//
// A class lists the messages it handles in a message map: a static table of
// entries, each naming the message and a typed handler named after it
// (OnSize, OnCopyData). The table of a class points to its base's, so a
// message goes to the most derived handler; one that no table lists goes to
// the window's default procedure. Commands (WM_COMMAND) travel the same
// tables, by id, and a frame offers them to the application object last.
#pragma once

#include "CObject.h"

class CCmdTarget;
class CCmdUI;

typedef LRESULT (*AFX_PMSGFN)(CCmdTarget* pTarget, WPARAM wParam, LPARAM lParam);

struct AFX_MSGMAP_ENTRY
{
    UINT nMessage;            // window message; WM_COMMAND for commands
    UINT nCode;               // command entries: CN_COMMAND or CN_UPDATE_COMMAND_UI
    UINT nID;                 // command entries: first id
    UINT nLastID;             // command entries: last id
    const UINT* pnRegistered; // registered message entries: the variable holding its number
    AFX_PMSGFN pfn;           // NULL ends the table
};

struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

enum
{
    CN_COMMAND = 0,
    CN_UPDATE_COMMAND_UI = static_cast<int>(0xFFFFFFFF)
};

class CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)
public:
    // Offers a command (or its update request, pExtra then being the CCmdUI)
    // to this object's message map. TRUE when a handler took it.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo);

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

    // The first entry of the map chain that handles nMessage (registered
    // messages by their number), or NULL.
    static const AFX_MSGMAP_ENTRY* FindMessageEntry(const AFX_MSGMAP* pMap, UINT nMessage);
};

#define DECLARE_MESSAGE_MAP()                          \
protected:                                             \
    static const AFX_MSGMAP* GetThisMessageMap();      \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                  \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                             \
    {                                                                           \
        typedef theClass ThisClass;                                             \
        typedef baseClass TheBaseClass;                                         \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                       \
            {0, 0, 0, 0, nullptr, nullptr}};                                    \
        static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, \
                                              &_messageEntries[0]};             \
        return &messageMap;                                                     \
    }

#define AFX_THIS(p) static_cast<ThisClass*>(p)

// Generic entries.
#define ON_MESSAGE(message, memberFxn)                                          \
    {message, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->memberFxn(w, l); }},
#define ON_REGISTERED_MESSAGE(nMessageVariable, memberFxn)                      \
    {0xC000, 0, 0, 0, &nMessageVariable, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->memberFxn(w, l); }},
#define ON_COMMAND(id, memberFxn)                                               \
    {WM_COMMAND, CN_COMMAND, id, id, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT \
     { AFX_THIS(p)->memberFxn(); return TRUE; }},
#define ON_UPDATE_COMMAND_UI(id, memberFxn)                                     \
    {WM_COMMAND, static_cast<UINT>(CN_UPDATE_COMMAND_UI), id, id, nullptr,      \
     [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT                             \
     { AFX_THIS(p)->memberFxn(reinterpret_cast<CCmdUI*>(l)); return TRUE; }},

// Typed window message entries.
#define ON_WM_CREATE()                                                          \
    {WM_CREATE, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->OnCreate(reinterpret_cast<LPCREATESTRUCT>(l)); }},
#define ON_WM_CLOSE()                                                           \
    {WM_CLOSE, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT   \
     { AFX_THIS(p)->OnClose(); return 0; }},
#define ON_WM_DESTROY()                                                         \
    {WM_DESTROY, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT \
     { AFX_THIS(p)->OnDestroy(); return 0; }},
#define ON_WM_SIZE()                                                            \
    {WM_SIZE, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { AFX_THIS(p)->OnSize(static_cast<UINT>(w), LOWORD(l), HIWORD(l)); return 0; }},
#define ON_WM_PAINT()                                                           \
    {WM_PAINT, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM, LPARAM) -> LRESULT   \
     { AFX_THIS(p)->OnPaint(); return 0; }},
#define ON_WM_TIMER()                                                           \
    {WM_TIMER, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM) -> LRESULT \
     { AFX_THIS(p)->OnTimer(static_cast<UINT_PTR>(w)); return 0; }},
#define ON_WM_COPYDATA()                                                        \
    {WM_COPYDATA, 0, 0, 0, nullptr, [](CCmdTarget* p, WPARAM w, LPARAM l) -> LRESULT \
     { return AFX_THIS(p)->OnCopyData(CWnd::FromHandle(reinterpret_cast<HWND>(w)), \
                                      reinterpret_cast<COPYDATASTRUCT*>(l)); }},
