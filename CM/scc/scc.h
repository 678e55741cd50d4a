/* Declares the published source code control (SCC) API: types, codes, bits, flags and the entries that a provider
 * library exports. It compiles as C and as C++ and needs no other header.
 *
 * A host finds each entry in the provider's library by its name; an entry that a provider doesn't export is
 * missing.
 *
 * - Texts end with NUL. The API does not fix their encoding; hosts and providers of this project use the encoding
 *   of the file system. Names of files are full paths without a separator at the end.
 * - The caller allocates every buffer, at least as large as the size that is published for it, fills it with zeros
 *   and passes neither a literal nor, where a text is expected, a null pointer.
 * - `long` is the C type of the platform, in arrays and out-parameters too: 64 bits wide on most 64-bit systems,
 *   32 on Windows.
 * - A call for several files returns 0 if it succeeded for all of them, otherwise the last error.
 * - "Returns 0, 2, -8" lists the results that an entry may have; their names are under "Results" below.
 * - "[unconfirmed]" marks facts for which there is only one source.
 */
#ifndef CM_SCC_SCC_H
#define CM_SCC_SCC_H

#if defined(_WIN32)
#define SCC_EXPORT __declspec(dllexport)
#else
#define SCC_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Versions, as SccGetVersion returns them: the major number in the high word, the minor in the low word. */
#define SCC_VERSION_1_1 0x00010001L
#define SCC_VERSION_1_3 0x00010003L

/* Types */

typedef long SCCRTN; /* the result of an entry: one of the SCC_OK, SCC_I_ and SCC_E_ codes */
typedef void *HWND;  /* a window: the parent of the provider's dialogs; null for none */

/* The commands that SccGetCommandOptions and SccPopulateList take. */
typedef enum SCCCOMMAND {
    SCC_COMMAND_GET = 0,
    SCC_COMMAND_CHECKOUT = 1,
    SCC_COMMAND_CHECKIN = 2,
    SCC_COMMAND_UNCHECKOUT = 3,
    SCC_COMMAND_ADD = 4,
    SCC_COMMAND_REMOVE = 5,
    SCC_COMMAND_DIFF = 6,
    SCC_COMMAND_HISTORY = 7,
    SCC_COMMAND_RENAME = 8,
    SCC_COMMAND_PROPERTIES = 9,
    SCC_COMMAND_OPTIONS = 10
} SCCCOMMAND;

/* Receives one name of SccPopulateList. `add` is 0 if the host should remove the name from its list; otherwise the
 * host should add it. The text is valid during the call only, and a name may come more than once. Returns 0 to
 * stop the enumeration. */
typedef int (*POPLISTFUNC)(void *data, int add, long status, char const *file);

/* Receives text of the provider, without a line end; `kind` is one of SCC_MSG_. Returns SCC_MSG_RTN_OK, or
 * SCC_MSG_RTN_CANCEL to cancel the operation. */
typedef long (*LPTEXTOUTPROC)(char const *text, unsigned long kind);

/* Sizes of texts in characters, the NUL not counted */
#define SCC_NAME_LEN 31        /* name of the provider, which SccInitialize fills in */
#define SCC_AUXLABEL_LEN 31    /* label of the auxiliary path, which SccInitialize fills in */
#define SCC_USER_LEN 31        /* name of the user */
#define SCC_PRJPATH_LEN 300    /* name of the project */
#define SCC_LOCALPATH_SIZE 260 /* local path; this size includes the NUL [unconfirmed name] */

/* Results */
#define SCC_I_SHARESUBPROJOK 7      /* accepted the first step of adding from the archive */
#define SCC_I_FILEDIFFERS 6         /* the local file differs from the archived version */
#define SCC_I_RELOADFILE 5          /* the local file has changed; reload it */
#define SCC_I_FILENOTAFFECTED 4     /* the file is as it was */
#define SCC_I_PROJECTCREATED 3      /* the project was created */
#define SCC_I_OPERATIONCANCELED 2   /* the user has cancelled */
#define SCC_I_ADV_SUPPORT 1         /* there are options for the command */
#define SCC_OK 0                    /* success */
#define SCC_E_INITIALIZEFAILED (-1) /* the provider could not be initialised */
#define SCC_E_UNKNOWNPROJECT (-2)   /* there is no such project */
#define SCC_E_COULDNOTCREATEPROJECT (-3)
#define SCC_E_NOTCHECKEDOUT (-4)
#define SCC_E_ALREADYCHECKEDOUT (-5)
#define SCC_E_FILEISLOCKED (-6)       /* another user holds a lock */
#define SCC_E_FILEOUTEXCLUSIVE (-7)   /* another user has the file out exclusively */
#define SCC_E_ACCESSFAILURE (-8)      /* archive or network could not be reached; try again */
#define SCC_E_CHECKINCONFLICT (-9)    /* the file conflicts with the archived version */
#define SCC_E_FILEALREADYEXISTS (-10) /* the archive has the file already */
#define SCC_E_FILENOTCONTROLLED (-11)
#define SCC_E_FILEISCHECKEDOUT (-12)
#define SCC_E_NOSPECIFIEDVERSION (-13) /* there is no such version or date */
#define SCC_E_OPNOTSUPPORTED (-14)
#define SCC_E_NONSPECIFICERROR (-15)   /* any other failure */
#define SCC_E_OPNOTPERFORMED (-16)     /* nothing was done */
#define SCC_E_TYPENOTSUPPORTED (-17)   /* the archive doesn't store this type of file */
#define SCC_E_VERIFYMERGE (-18)        /* merged without a conflict; the user should check the file */
#define SCC_E_FIXMERGE (-19)           /* merged with a conflict, which the user has to resolve */
#define SCC_E_SHELLFAILURE (-20)       /* a program could not be started */
#define SCC_E_INVALIDUSER (-21)        /* the user is not known or could not log in */
#define SCC_E_PROJECTALREADYOPEN (-22) /* the context has an open project */
#define SCC_E_PROJSYNTAXERR (-23)      /* the name of the project is malformed */
#define SCC_E_INVALIDFILEPATH (-24)
#define SCC_E_PROJNOTOPEN (-25)   /* the context has no open project */
#define SCC_E_NOTAUTHORIZED (-26) /* the user may not do this */
#define SCC_E_FILESYNTAXERR (-27) /* the name of the file is malformed */
#define SCC_E_FILENOTEXIST (-28)  /* there is no such local file */
#define SCC_E_CONNECTIONFAILURE (-29)
#define SCC_E_UNKNOWNERROR (-30)            /* [unconfirmed name] */
#define SCC_E_BACKGROUNDGETINPROGRESS (-31) /* files are being fetched in the background [unconfirmed name] */

/* Status of a file. Bits that a provider doesn't support are 0. Test for SCC_STATUS_INVALID before testing bits.
 */
#define SCC_STATUS_INVALID (-1L)
#define SCC_STATUS_NOTCONTROLLED 0x0000L
#define SCC_STATUS_CONTROLLED 0x0001L
#define SCC_STATUS_CHECKEDOUT 0x0002L   /* by this user in this folder; implies SCC_STATUS_OUTBYUSER */
#define SCC_STATUS_OUTOTHER 0x0004L     /* checked out by another user */
#define SCC_STATUS_OUTEXCLUSIVE 0x0008L /* checked out exclusively */
#define SCC_STATUS_OUTMULTIPLE 0x0010L  /* checked out by several users */
#define SCC_STATUS_OUTOFDATE 0x0020L    /* the archive has a newer version */
#define SCC_STATUS_DELETED 0x0040L      /* deleted in the archive */
#define SCC_STATUS_LOCKED 0x0080L       /* no further versions are allowed */
#define SCC_STATUS_MERGED 0x0100L       /* merged, but not yet checked */
#define SCC_STATUS_SHARED 0x0200L       /* shared between projects */
#define SCC_STATUS_PINNED 0x0400L       /* shared, and held at one version */
#define SCC_STATUS_MODIFIED 0x0800L     /* changed locally */
#define SCC_STATUS_OUTBYUSER 0x1000L    /* checked out by this user, in any folder */
#define SCC_STATUS_NOMERGE 0x2000L      /* never merged with other versions */

/* Capabilities, which SccInitialize fills in. Hold them in an unsigned type. There are none for get, check out,
 * check in, uncheck out and add, which every provider offers. */
#define SCC_CAP_REMOVE 0x00000001UL
#define SCC_CAP_RENAME 0x00000002UL
#define SCC_CAP_DIFF 0x00000004UL
#define SCC_CAP_HISTORY 0x00000008UL
#define SCC_CAP_PROPERTIES 0x00000010UL
#define SCC_CAP_RUNSCC 0x00000020UL
#define SCC_CAP_GETCOMMANDOPTIONS 0x00000040UL
#define SCC_CAP_QUERYINFO 0x00000080UL
#define SCC_CAP_GETEVENTS 0x00000100UL
#define SCC_CAP_GETPROJPATH 0x00000200UL
#define SCC_CAP_ADDFROMSCC 0x00000400UL
#define SCC_CAP_COMMENTCHECKOUT 0x00000800UL
#define SCC_CAP_COMMENTCHECKIN 0x00001000UL
#define SCC_CAP_COMMENTADD 0x00002000UL
#define SCC_CAP_COMMENTREMOVE 0x00004000UL
#define SCC_CAP_TEXTOUT 0x00008000UL          /* writes to the text output function of SccOpenProject */
#define SCC_CAP_ADD_STORELATEST 0x00200000UL  /* can store only the newest version */
#define SCC_CAP_HISTORY_MULTFILE 0x00400000UL /* SccHistory takes several files */
#define SCC_CAP_POPULATELIST 0x02000000UL
#define SCC_CAP_COMMENTPROJECT 0x04000000UL /* takes a comment when it creates a project */
#define SCC_CAP_MULTICHECKOUT 0x08000000UL  /* several users may check the same file out */
#define SCC_CAP_REENTRANT 0x40000000UL      /* several contexts may have an open project at once */

/* Flags of SccCheckout, SccCheckin and SccAdd */
#define SCC_KEEP_CHECKEDOUT 0x1000L /* keep the file checked out afterwards */

/* Flags of SccGet */
#define SCC_GET_ALL 1L       /* the names are directories; get all files in them */
#define SCC_GET_RECURSIVE 2L /* with SCC_GET_ALL: and in the directories below */

/* Flags of SccAdd, one word for each file */
#define SCC_FILETYPE_AUTO 0L
#define SCC_FILETYPE_TEXT 1L
#define SCC_FILETYPE_BINARY 2L
#define SCC_ADD_STORELATEST 4L /* store the newest version only */

/* Flags of SccPopulateList */
#define SCC_PL_DIR 1L /* all names are directories */

/* Flags of SccOpenProject */
#define SCC_OP_CREATEIFNEW 1L /* create the project if there is none */
#define SCC_OP_SILENTOPEN 2L  /* don't ask the user, and fail if the project is not known */

/* Kinds of text */
#define SCC_MSG_INFO 1UL
#define SCC_MSG_WARNING 2UL
#define SCC_MSG_ERROR 3UL
#define SCC_MSG_STATUS 4UL
#define SCC_MSG_DOCANCEL 5UL    /* no text: has the user cancelled? */
#define SCC_MSG_STARTCANCEL 6UL /* offer the user a way to cancel */
#define SCC_MSG_STOPCANCEL 7UL  /* withdraw it */

/* Results of the text output function */
#define SCC_MSG_RTN_OK 0L
#define SCC_MSG_RTN_CANCEL (-1L)

/* Options of SccSetOption, with the values that they take */
#define SCC_OPT_EVENTQUEUE 1L /* queue of status changes: off, on */
#define SCC_OPT_EQ_DISABLE 0L
#define SCC_OPT_EQ_ENABLE 1L
#define SCC_OPT_USERDATA 2L      /* first argument of the callback for changed names */
#define SCC_OPT_HASCANCELMODE 3L /* whether the host lets the user cancel: no, yes */
#define SCC_OPT_HCM_NO 0L
#define SCC_OPT_HCM_YES 1L
#define SCC_OPT_NAMECHANGEPFN 4L /* callback for changed names */
#define SCC_OPT_SCCCHECKOUTONLY                                                                                   \
    5L /* whether files are checked out only by the provider's own program: no, yes                               \
        */
#define SCC_OPT_SCO_NO 0L
#define SCC_OPT_SCO_YES 1L
#define SCC_OPT_SHARESUBPROJ 6L /* whether adding from the archive may share a sub-project */

/* The stages of a context: initialise, set options, perhaps pick a project, open it, work, close it, and then open
 * another or uninitialise. A context has at most one open project. */

/* Returns the version of the API that the provider implements. */
SCC_EXPORT long SccGetVersion(void);

/* Creates a context in `*context`, which is null on entry. `callerName` is the host's. The provider fills in its
 * name (SCC_NAME_LEN), its capabilities, the label of its auxiliary path (SCC_AUXLABEL_LEN), and how many
 * characters a comment of a check out and any other comment may have. Returns 0, -1, -15 or -26. */
SCC_EXPORT SCCRTN SccInitialize(void **context, HWND window, char *callerName, char *sccName, long *capabilities,
                                char *auxPathLabel, unsigned long *checkoutCommentLength,
                                unsigned long *commentLength);

/* Destroys a context, which must have no open project. */
SCC_EXPORT SCCRTN SccUninitialize(void *context);

/* Lets the user pick or create a project. The texts are proposals on entry and the choice on return; name and
 * auxiliary path mean something to the provider only. The local path may change only if `allowChangePath` is not
 * 0. On entry `*isNew` says whether a project may be created; on return, whether one was created. Returns 0, 2,
 * -8, -15 or -29. */
SCC_EXPORT SCCRTN SccGetProjPath(void *context, HWND window, char *user, char *projectName, char *localPath,
                                 char *auxProjectPath, int allowChangePath, int *isNew);

/* Opens a project that SccGetProjPath has given, now or earlier. User and auxiliary path may change. `textOutput`
 * may be null; `flags` are SCC_OP_. Returns 0, -1, -2, -3, -8, -15, -21, -23, -24, -26, or 3 for a created
 * project. */
SCC_EXPORT SCCRTN SccOpenProject(void *context, HWND window, char *user, char *projectName, char *localPath,
                                 char *auxProjectPath, char *comment, LPTEXTOUTPROC textOutput, long flags);

/* Closes the open project. Returns 0, -15, -25 or -26. */
SCC_EXPORT SCCRTN SccCloseProject(void *context);

/* Sets one of the SCC_OPT_ options. Returns 0, 7, or -14 for an option that the provider doesn't have. */
SCC_EXPORT SCCRTN SccSetOption(void *context, long option, long value);

/* If `options` is null, returns 1 (SCC_I_ADV_SUPPORT) if there are options for the command. Otherwise shows a
 * dialog and sets `*options`, which is then passed to the command; its memory belongs to the provider. Returns 0,
 * 1, 2, -8, -12, -14 or -15. */
SCC_EXPORT SCCRTN SccGetCommandOptions(void *context, HWND window, SCCCOMMAND command, void **options);

/* Commands on files. All but SccAdd, SccCheckin and SccDiff work also for a controlled file that is missing on
 * disk. */

/* Gets the newest versions, read-only. `flags` are SCC_GET_. Returns 0, 2, -8, -11, -12, -13, -14, -15 or -26. */
SCC_EXPORT SCCRTN SccGet(void *context, HWND window, long count, char **files, long flags, void *options);

/* Checks files out. Returns 0, 2, -5, -6, -7, -8, -11, -15 or -26. */
SCC_EXPORT SCCRTN SccCheckout(void *context, HWND window, long count, char **files, char *comment, long flags,
                              void *options);

/* Checks files in. A null comment makes the provider ask for one. Returns 0, 2, 5, -4, -8, -9, -11, -15, -18, -19,
 * -26 or -28. */
SCC_EXPORT SCCRTN SccCheckin(void *context, HWND window, long count, char **files, char *comment, long flags,
                             void *options);

/* Gives up check outs; the files are then neither checked out nor changed. No flags are defined. Returns 0, 2, -4,
 * -8, -11, -15, -25 or -26. */
SCC_EXPORT SCCRTN SccUncheckout(void *context, HWND window, long count, char **files, long flags, void *options);

/* Adds files to the archive. `flags` has one word for each file: SCC_FILETYPE_, SCC_ADD_STORELATEST,
 * SCC_KEEP_CHECKEDOUT. Returns 0, 2, 5, -8, -10, -14, -15, -17, -26 or -28. */
SCC_EXPORT SCCRTN SccAdd(void *context, HWND window, long count, char **files, char *comment, long *flags,
                         void *options);

/* Removes files from the archive; the local files stay. No flags are defined. Returns 0, 2, -8, -11, -12, -14, -15
 * or -26. */
SCC_EXPORT SCCRTN SccRemove(void *context, HWND window, long count, char **files, char *comment, long flags,
                            void *options);

/* Renames a file in the archive, or moves it if the directory differs. The host renames the local file. Returns 0,
 * -3, -8, -11, -15, -16, -25 or -26. */
SCC_EXPORT SCCRTN SccRename(void *context, HWND window, char *oldFile, char *newFile);

/* Shows the history of files. No flags are defined. Returns 0, -8, -11, -14, -15, -25, -26, or 5 for a changed
 * local file. */
SCC_EXPORT SCCRTN SccHistory(void *context, HWND window, long count, char **files, long flags, void *options);

/* Shows what the archive knows of a file. Returns 0, -11, -15, -25, -26, -30, or 5 for a changed local file. */
SCC_EXPORT SCCRTN SccProperties(void *context, HWND window, char *file);

/* Compares a local file with the archived version. Returns 0 if they are the same, 6 if they differ, or 5, -8,
 * -11, -15, -26 or -28. */
SCC_EXPORT SCCRTN SccDiff(void *context, HWND window, char *file, long flags, void *options);

/* Status */

/* Fills in one SCC_STATUS_ word for each file. Returns 0, -8, -15, or -25 without an open project. */
SCC_EXPORT SCCRTN SccQueryInfo(void *context, long count, char **files, long *status);

/* Names the files that a command would apply to, by calls of `callback` with `data`. With SCC_PL_DIR in `flags`
 * the names are directories. `status` receives one word for each of the given names. Returns 0 or -15. */
SCC_EXPORT SCCRTN SccPopulateList(void *context, SCCCOMMAND command, long count, char **files,
                                  POPLISTFUNC callback, void *data, long *status, long flags);

/* Tasks: extensions, which few providers have. 0 is success, any other result a failure. */

/* Checks in everything that belongs to the current task. */
SCC_EXPORT long SccCheckinTask(void *context, char *comment);
/* Makes the task with this identifier the current one. */
SCC_EXPORT long SccSetTask(void *context, char *task);
/* Fills in a text with the identifier of the current task: SCC_TASK_SIZE characters with the NUL. */
SCC_EXPORT long SccGetDefaultTask(void *context, char *task);
/* Lets the user create a task. The second argument is always null. */
SCC_EXPORT long SccCreateTask(void *context, void *reserved);
/* Shows the task with this identifier. */
SCC_EXPORT long SccShowTask(void *context, char *task);
/* Fills in the path of a file, SCC_TASKFILE_SIZE characters with the NUL. The file holds the tasks that are
 * assigned to the user, as text in 16-bit characters of the machine's byte order. */
SCC_EXPORT long SccListTasks(void *context, char *file);

#define SCC_TASK_SIZE 260     /* [unconfirmed name] */
#define SCC_TASKFILE_SIZE 500 /* [unconfirmed name] */

#ifdef __cplusplus
}
#endif

#endif
