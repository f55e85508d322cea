-- Tables of the storehouse system. Running this file again changes nothing that exists already.
--
-- The database has to use the collation Chinese_PRC_CI_AS: texts are sent without the N prefix, compared without
-- regard to case, and their widths count the bytes of code page 936.
--
-- Conventions
--   Prices, amounts and quantities are decimal(18,6): six decimals are the most that any screen sends, and stock
--   counters moved by small relative steps must come back to exactly zero.
--   Columns that are sent as quoted text and may be sent empty (split ratio, limits) are float, which takes '' as 0.
--   Numbers of the catalogue accept NULL because an import sends NULL for empty cells and repairs them afterwards.
--   Flags are smallint 0 or 1, so that a cell shows "0" and not "False".
--   Dates are datetime. Columns named id are given by the database and grow with insertion.
--   Codes are never unique except the drug code: documents are numbered by the clients.

---------------------------------------------------------------------------------------------------------------------
-- Operators and rights
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('userdb') IS NULL
BEGIN
  CREATE TABLE userdb (
    id         int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    username   varchar(50) NOT NULL,
    password   varchar(50) NOT NULL DEFAULT '',
    group_name varchar(50) NOT NULL DEFAULT '',
    IME        int         NOT NULL DEFAULT 0,          -- keyboard layout handle, 0 leaves the layout alone
    SearchType varchar(20) NOT NULL DEFAULT ''          -- 拼音码, 五笔码 or 编码
  )
  CREATE INDEX IX_userdb_username ON userdb (username)
END
GO

IF OBJECT_ID('QX_Temp') IS NULL
BEGIN
  CREATE TABLE QX_Temp (
    MoudelKey  varchar(50)  NOT NULL PRIMARY KEY,
    MoudelName varchar(100) NOT NULL                    -- as the operator reads it in a refusal
  )
END
GO

IF OBJECT_ID('QX_Temp2') IS NULL
BEGIN
  CREATE TABLE QX_Temp2 (
    Groupname varchar(50) NOT NULL,
    MoudelKey varchar(50) NOT NULL,
    QX        smallint    NOT NULL DEFAULT 0
  )
  CREATE INDEX IX_QX_Temp2_group ON QX_Temp2 (Groupname)
END
GO

IF OBJECT_ID('Yf_sq') IS NULL
BEGIN
  CREATE TABLE Yf_sq (
    username varchar(50) NOT NULL,
    SQBH     varchar(50) NULL                           -- the operator's community unit
  )
  CREATE INDEX IX_Yf_sq_username ON Yf_sq (username)
END
GO

IF OBJECT_ID('YF_YKLX') IS NULL
BEGIN
  CREATE TABLE YF_YKLX (
    Sname varchar(50) NOT NULL,
    SLX   varchar(50) NOT NULL                          -- 药库 or 药房
  )
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Drug master data
---------------------------------------------------------------------------------------------------------------------

-- One row is one drug, or one examination item, of storehouse and pharmacy together.
-- It has no column id: queries that join it sort by the other table's id without naming the table. SFXM has no index:
-- it tells drugs apart so little that an index would only draw searches by code away from theirs.
IF OBJECT_ID('YF_YPML') IS NULL
BEGIN
  CREATE TABLE YF_YPML (
    YPBM    varchar(30)  NOT NULL PRIMARY KEY,
    YPMC    varchar(100) NULL,
    SPMC    varchar(100) NULL,
    GG      varchar(100) NULL,
    JX      varchar(50)  NULL,
    SCCJ    varchar(100) NULL,
    ABC     varchar(10)  NULL,
    SFXM    varchar(50)  NULL,                          -- sItemName of eK_ChargeItem
    PZWH    varchar(100) NULL,
    ZCSB    varchar(100) NULL,
    ZLZK    varchar(50)  NULL,
    YLZYFL  varchar(100) NULL,
    YBXMBH  varchar(50)  NULL,
    NHXMBH  varchar(50)  NULL,
    PYDM    varchar(100) NULL,
    WBDM    varchar(100) NULL,
    SP_PYDM varchar(100) NULL,
    SP_WBDM varchar(100) NULL,
    DW      varchar(50)  NULL,                          -- large unit
    ZXDW    varchar(50)  NULL,                          -- smallest unit
    CLB     float        NULL DEFAULT 1,                -- number of ZXDW in one DW
    JLDW    varchar(50)  NULL,
    LSJ     decimal(18,6) NULL DEFAULT 0,               -- retail price of one DW
    CLLSJ   decimal(18,6) NULL DEFAULT 0,               -- retail price of one ZXDW
    PFJ     decimal(18,6) NULL DEFAULT 0,               -- purchase price as the last receipt left it
    PLJ     decimal(18,6) NULL DEFAULT 0,               -- wholesale price of one DW
    YKKCL   decimal(18,6) NULL DEFAULT 0,               -- storehouse stock, in ZXDW
    KCL     decimal(18,6) NULL DEFAULT 0,               -- pharmacy stock, in ZXDW
    YKKCSX  float        NULL DEFAULT 0,                -- limits are in ZXDW; 0 is no limit
    YKKCXX  float        NULL DEFAULT 0,
    KCSX    float        NULL DEFAULT 0,
    KCXX    float        NULL DEFAULT 0,
    CFXL    float        NULL DEFAULT 0,
    SFSF    smallint     NULL DEFAULT 1,
    ZHJBZ   smallint     NULL DEFAULT 0,
    HZYLYY  smallint     NULL DEFAULT 0,
    GFYY    smallint     NULL DEFAULT 0,
    YBYY    smallint     NULL DEFAULT 0,
    ZSYP    smallint     NULL DEFAULT 0,
    PSPB    smallint     NULL DEFAULT 0,
    SFTY    smallint     NULL DEFAULT 0,                -- 1 is a stopped drug
    GYTJ    varchar(50)  NULL,
    DCJL    varchar(50)  NULL,
    YYPC    varchar(50)  NULL
  )
  CREATE INDEX IX_YF_YPML_PYDM ON YF_YPML (PYDM)
  CREATE INDEX IX_YF_YPML_WBDM ON YF_YPML (WBDM)
  CREATE INDEX IX_YF_YPML_SP_PYDM ON YF_YPML (SP_PYDM)
  CREATE INDEX IX_YF_YPML_SP_WBDM ON YF_YPML (SP_WBDM)
END
GO

IF OBJECT_ID('GY_HZBM') IS NULL
BEGIN
  CREATE TABLE GY_HZBM (
    HZ varchar(4)  NOT NULL,                            -- one character
    PY varchar(10) NULL,                                -- its pinyin initial
    WB varchar(10) NULL                                 -- its wubi code, of which the first letter counts
  )
  CREATE INDEX IX_GY_HZBM_HZ ON GY_HZBM (HZ)
END
GO

IF OBJECT_ID('DAGL_ZD') IS NULL
BEGIN
  CREATE TABLE DAGL_ZD (
    DM         varchar(50)  NOT NULL PRIMARY KEY,
    DMMC       varchar(100) NOT NULL,
    ZD_TYPE    smallint     NOT NULL DEFAULT 0,         -- 1 is a system dictionary, which cannot be deleted
    Moudelname varchar(100) NULL,
    BZ         varchar(200) NULL,
    XX         int          NULL
  )
END
GO

IF OBJECT_ID('CS') IS NULL
BEGIN
  CREATE TABLE CS (
    ID        int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    Controlid varchar(50)  NOT NULL,
    DM        varchar(100) NULL,
    DMMC      varchar(200) NULL
  )
  CREATE INDEX IX_CS_Controlid ON CS (Controlid)
END
GO

IF OBJECT_ID('ZD_Tabel') IS NULL
BEGIN
  CREATE TABLE ZD_Tabel (
    ID    int          NOT NULL PRIMARY KEY,
    PID   int          NULL,
    Lavel int          NOT NULL,
    Sname varchar(100) NOT NULL,
    Ename varchar(100) NULL
  )
END
GO

IF OBJECT_ID('ZD_LinkTable') IS NULL
BEGIN
  CREATE TABLE ZD_LinkTable (
    ID           int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    FormName     varchar(100) NOT NULL,
    ControlEname varchar(100) NOT NULL,
    ControlCname varchar(100) NULL,
    LINKZD       varchar(50)  NULL,                     -- DM of DAGL_ZD
    XH           int          NULL
  )
  CREATE INDEX IX_ZD_LinkTable_FormName ON ZD_LinkTable (FormName)
END
GO

IF OBJECT_ID('Config_YYPC') IS NULL
BEGIN
  CREATE TABLE Config_YYPC (
    ID  int         NOT NULL PRIMARY KEY,               -- sort order
    LDW varchar(50) NOT NULL
  )
END
GO

IF OBJECT_ID('YPGL_CDWF') IS NULL
BEGIN
  CREATE TABLE YPGL_CDWF (
    CDMC varchar(100) NOT NULL,
    PYDM varchar(100) NULL,
    WBDM varchar(100) NULL,
    CDQC varchar(200) NULL,
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY
  )
  CREATE INDEX IX_YPGL_CDWF_PYDM ON YPGL_CDWF (PYDM)
END
GO

IF OBJECT_ID('DATAGRID_HEAD') IS NULL
BEGIN
  CREATE TABLE DATAGRID_HEAD (
    id         int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    Tabel_Name varchar(100) NOT NULL,
    File_Ename varchar(100) NOT NULL,                   -- column of the table
    File_Cname varchar(100) NULL,                       -- column head in a workbook
    Filed_Type varchar(10)  NULL,                       -- 1 text, 2 number (sent bare), 3 date
    File_Show  smallint     NULL DEFAULT 1
  )
  CREATE INDEX IX_DATAGRID_HEAD_table ON DATAGRID_HEAD (Tabel_Name)
END
GO

IF OBJECT_ID('UploadFileds') IS NULL
BEGIN
  CREATE TABLE UploadFileds (
    id               int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    Table_Name       varchar(100) NOT NULL,
    FiledsName       varchar(100) NOT NULL,
    FiledsCName      varchar(100) NULL,
    UploadFiledName  varchar(100) NULL,
    UploadFiledCname varchar(100) NULL,
    FiledType        varchar(50)  NULL,
    UploadType       varchar(50)  NULL
  )
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Charge items and insurance catalogues
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('eK_ChargeItem') IS NULL
BEGIN
  CREATE TABLE eK_ChargeItem (
    sItemName varchar(50) NOT NULL,
    YPBZ      smallint    NOT NULL DEFAULT 0,           -- 1 is an item of drugs
    SFJKC     smallint    NOT NULL DEFAULT 0            -- 1 is an item that is kept in stock
  )
END
GO

-- Which storehouse (sInvItemName) keeps the drugs of which charge item.
IF OBJECT_ID('YFYK_LinkItem') IS NULL
BEGIN
  CREATE TABLE YFYK_LinkItem (
    sInvItemName    varchar(50) NOT NULL,
    sChargeItemName varchar(50) NOT NULL
  )
  CREATE INDEX IX_YFYK_LinkItem_inv ON YFYK_LinkItem (sInvItemName, sChargeItemName)
END
GO

IF OBJECT_ID('drug') IS NULL
BEGIN
  CREATE TABLE drug (
    drug_code   varchar(50)   NOT NULL,
    drug_name   varchar(200)  NULL,
    drug_sort   varchar(100)  NULL,
    other_name  varchar(200)  NULL,
    other_sort  varchar(100)  NULL,
    drug_type   varchar(50)   NULL,
    item_class  varchar(50)   NULL,
    spec        varchar(200)  NULL,
    dosage_code varchar(50)   NULL,
    usage_code  varchar(50)   NULL,
    price       decimal(18,6) NULL,
    illfit_code varchar(200)  NULL,
    rate        decimal(18,6) NULL,
    memo        varchar(500)  NULL,
    status      varchar(20)   NULL,
    scbz        varchar(20)   NULL,
    drug_bzbh   varchar(50)   NULL,
    drug_pcode  varchar(50)   NULL,
    drug_islast varchar(20)   NULL,
    rate_status varchar(20)   NULL,
    drug_unit   varchar(50)   NULL
  )
  CREATE INDEX IX_drug_sort ON drug (drug_sort)
  CREATE INDEX IX_drug_other_sort ON drug (other_sort)
END
GO

IF OBJECT_ID('item') IS NULL
BEGIN
  CREATE TABLE item (
    item_code  varchar(50)   NOT NULL,
    item_name  varchar(200)  NULL,
    item_sort  varchar(100)  NULL,
    other_name varchar(200)  NULL,
    other_sort varchar(100)  NULL,
    item_type  varchar(50)   NULL,
    item_class varchar(50)   NULL,
    unit_code  varchar(50)   NULL,
    price      decimal(18,6) NULL,
    rate       decimal(18,6) NULL,
    memo       varchar(500)  NULL,
    dept       varchar(100)  NULL,
    item_bzbh  varchar(50)   NULL
  )
  CREATE INDEX IX_item_sort ON item (item_sort)
  CREATE INDEX IX_item_other_sort ON item (other_sort)
END
GO

-- What a combination item (ZHBM) is made of: SL of the item YPBM for one of the combination.
IF OBJECT_ID('YF_ZHXMMX') IS NULL
BEGIN
  CREATE TABLE YF_ZHXMMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    ZHBM varchar(30)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    SL   decimal(18,6) NOT NULL DEFAULT 1
  )
  CREATE INDEX IX_YF_ZHXMMX_ZHBM ON YF_ZHXMMX (ZHBM)
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Stock and its log
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('YK_CurryPH') IS NULL
BEGIN
  CREATE TABLE YK_CurryPH (
    ID   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    RKDH varchar(50)   NULL,                            -- document that created the row
    YPBM varchar(30)   NOT NULL,
    PH   varchar(50)   NULL,
    XQ   datetime      NULL,
    SL   decimal(18,6) NOT NULL DEFAULT 0,              -- in ZXDW
    PFJ  decimal(18,6) NULL DEFAULT 0,                  -- of the unit of the line that created the row
    PLJ  decimal(18,6) NULL DEFAULT 0,
    RKRQ datetime      NULL                             -- day of the first receipt
  )
  CREATE INDEX IX_YK_CurryPH_YPBM ON YK_CurryPH (YPBM, PH)
  CREATE INDEX IX_YK_CurryPH_XQ ON YK_CurryPH (XQ)
  CREATE INDEX IX_YK_CurryPH_SL ON YK_CurryPH (SL)
END
GO

IF OBJECT_ID('YPCRK') IS NULL
BEGIN
  CREATE TABLE YPCRK (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    YPBM varchar(30)   NOT NULL,
    SL   decimal(18,6) NOT NULL,                        -- in the unit of the line, DW
    CLB  smallint      NOT NULL,
    KCL  decimal(18,6) NOT NULL,                        -- moved quantity in ZXDW; of a stock take the counted stock
    DW   varchar(50)   NULL,
    LB   smallint      NOT NULL,                        -- 0 in, 1 out
    MS   varchar(200)  NULL,
    RQ   datetime      NOT NULL,
    KFBM varchar(50)   NULL,
    BZ   varchar(200)  NULL,
    CZY  varchar(50)   NULL
  )
  CREATE INDEX IX_YPCRK_YPBM ON YPCRK (YPBM, RQ)
  CREATE INDEX IX_YPCRK_RQ ON YPCRK (RQ)
END
GO

IF OBJECT_ID('UploadToServerLog') IS NULL
BEGIN
  CREATE TABLE UploadToServerLog (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    RQ   datetime     NOT NULL,
    LX   varchar(50)  NULL,
    INFO varchar(500) NULL,
    CZY  varchar(50)  NULL
  )
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Documents: a head and its lines share the document number. A line counts in its own unit DW with its own CLB.
---------------------------------------------------------------------------------------------------------------------

-- Goods receipt
IF OBJECT_ID('YK_YPRK') IS NULL
BEGIN
  CREATE TABLE YK_YPRK (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFMC varchar(50)  NULL,
    RKDH varchar(50)  NOT NULL,
    RKRQ datetime     NULL,
    FPH  varchar(50)  NULL,
    FPRQ datetime     NULL,
    GHDW varchar(100) NULL,
    FKBZ smallint     NOT NULL DEFAULT 0,
    YSR  varchar(50)  NULL,
    FHR  varchar(50)  NULL,
    DJR  varchar(50)  NULL
  )
  CREATE INDEX IX_YK_YPRK_RKDH ON YK_YPRK (RKDH)
  CREATE INDEX IX_YK_YPRK_RKRQ ON YK_YPRK (RKRQ, id)
END
GO

IF OBJECT_ID('YK_YPRKMX') IS NULL
BEGIN
  CREATE TABLE YK_YPRKMX (
    id    int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    RKDH  varchar(50)   NOT NULL,
    YPBM  varchar(30)   NOT NULL,
    PM    varchar(100)  NULL,
    GG    varchar(100)  NULL,
    DW    varchar(50)   NULL,
    CD    varchar(100)  NULL,
    PLJ   decimal(18,6) NULL,
    RKSL  decimal(18,6) NULL,
    PFJ   decimal(18,6) NULL,                           -- of the large unit, as typed
    JE    decimal(18,6) NULL,
    PH    varchar(50)   NULL,
    XQ    datetime      NULL,
    CLB   smallint      NULL,
    LSJ   decimal(18,6) NULL,
    SJPFJ decimal(18,6) NULL                            -- of the line's unit
  )
  CREATE INDEX IX_YK_YPRKMX_RKDH ON YK_YPRKMX (RKDH)
  CREATE INDEX IX_YK_YPRKMX_YPBM ON YK_YPRKMX (YPBM, PFJ)
END
GO

-- Issue note to a pharmacy
IF OBJECT_ID('YPSLD') IS NULL
BEGIN
  CREATE TABLE YPSLD (
    ID    int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    SLDH  varchar(50)  NOT NULL,
    SLRQ  datetime     NULL,
    BZ    varchar(500) NULL,
    CZY   varchar(50)  NULL,
    CKFS  smallint     NOT NULL DEFAULT 0,
    SFTJ  smallint     NOT NULL DEFAULT 0,
    LYDW  varchar(100) NULL,
    SFQR  smallint     NOT NULL DEFAULT 0,
    FYYK  varchar(50)  NULL,
    YKQRR varchar(50)  NULL,
    CKRQ  datetime     NULL,
    YFQR  smallint     NOT NULL DEFAULT 0,
    YFQRR varchar(50)  NULL
  )
  CREATE INDEX IX_YPSLD_SLDH ON YPSLD (SLDH)
  CREATE INDEX IX_YPSLD_SLRQ ON YPSLD (SLRQ, ID)
  CREATE INDEX IX_YPSLD_SFQR ON YPSLD (SFQR, LYDW, CKRQ)
END
GO

-- PH, XQ and LSJ stay NULL until the confirmed note is moved out of stock.
IF OBJECT_ID('YPSLMX') IS NULL
BEGIN
  CREATE TABLE YPSLMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    SLDH varchar(50)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    DW   varchar(50)   NULL,
    CD   varchar(100)  NULL,
    SLSL decimal(18,6) NULL,                            -- asked for
    SFSL decimal(18,6) NULL,                            -- issued
    CLB  smallint      NULL,
    LSJ  decimal(18,6) NULL,
    PH   varchar(50)   NULL,
    XQ   datetime      NULL
  )
  CREATE INDEX IX_YPSLMX_SLDH ON YPSLMX (SLDH)
END
GO

-- Department requisition
IF OBJECT_ID('YK_KSLYDJ') IS NULL
BEGIN
  CREATE TABLE YK_KSLYDJ (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFMC varchar(50)  NULL,
    LYDH varchar(50)  NOT NULL,
    LYRQ datetime     NULL,
    LYDW varchar(100) NULL,
    LYR  varchar(50)  NULL,
    FHR  varchar(50)  NULL,
    DJR  varchar(50)  NULL,
    BZ   varchar(500) NULL
  )
  CREATE INDEX IX_YK_KSLYDJ_LYDH ON YK_KSLYDJ (LYDH)
  CREATE INDEX IX_YK_KSLYDJ_LYRQ ON YK_KSLYDJ (LYRQ, id)
END
GO

IF OBJECT_ID('YK_KSLYDJMX') IS NULL
BEGIN
  CREATE TABLE YK_KSLYDJMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    LYDH varchar(50)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    YPMC varchar(100)  NULL,
    GG   varchar(100)  NULL,
    DW   varchar(50)   NULL,
    CD   varchar(100)  NULL,
    SL   decimal(18,6) NULL,
    LSJ  decimal(18,6) NULL,
    PFJ  decimal(18,6) NULL,
    PH   varchar(50)   NULL,
    XQ   datetime      NULL,
    CLB  smallint      NULL
  )
  CREATE INDEX IX_YK_KSLYDJMX_LYDH ON YK_KSLYDJMX (LYDH)
END
GO

-- Return to supplier
IF OBJECT_ID('YK_TYDJ') IS NULL
BEGIN
  CREATE TABLE YK_TYDJ (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFMC varchar(50)  NULL,
    TYDH varchar(50)  NOT NULL,
    TYRQ datetime     NULL,
    ZDR  varchar(50)  NULL,
    FHR  varchar(50)  NULL,
    GHDW varchar(100) NULL,
    BZ   varchar(500) NULL
  )
  CREATE INDEX IX_YK_TYDJ_TYDH ON YK_TYDJ (TYDH)
  CREATE INDEX IX_YK_TYDJ_TYRQ ON YK_TYDJ (TYRQ, id)
END
GO

IF OBJECT_ID('YK_TYDJMX') IS NULL
BEGIN
  CREATE TABLE YK_TYDJMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    TYDH varchar(50)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    YPMC varchar(100)  NULL,
    GG   varchar(100)  NULL,
    DW   varchar(50)   NULL,
    CD   varchar(100)  NULL,
    TKSL decimal(18,6) NULL,
    PFJ  decimal(18,6) NULL,
    JE   decimal(18,6) NULL,
    PH   varchar(50)   NULL,
    XQ   datetime      NULL,
    CLB  smallint      NULL
  )
  CREATE INDEX IX_YK_TYDJMX_TYDH ON YK_TYDJMX (TYDH)
END
GO

-- Pharmacy return, written by the pharmacy's program
IF OBJECT_ID('YFTYDJ') IS NULL
BEGIN
  CREATE TABLE YFTYDJ (
    ID    int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    TYDH  varchar(50)  NOT NULL,
    TYRQ  datetime     NULL,
    BZ    varchar(500) NULL,
    CZY   varchar(50)  NULL,
    LYDW  varchar(100) NULL,
    CKFS  smallint     NOT NULL DEFAULT 0,
    SFTJ  smallint     NOT NULL DEFAULT 0,
    SFQR  smallint     NOT NULL DEFAULT 0,
    YKQRR varchar(50)  NULL,
    CKRQ  datetime     NULL,
    YFQR  smallint     NOT NULL DEFAULT 0
  )
  CREATE INDEX IX_YFTYDJ_TYDH ON YFTYDJ (TYDH)
  CREATE INDEX IX_YFTYDJ_SFQR ON YFTYDJ (SFQR, LYDW, CKRQ)
END
GO

IF OBJECT_ID('YFTYDJMX') IS NULL
BEGIN
  CREATE TABLE YFTYDJMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    TYDH varchar(50)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    YPMC varchar(100)  NULL,
    GG   varchar(100)  NULL,
    DW   varchar(50)   NULL,
    CD   varchar(100)  NULL,
    LSJ  decimal(18,6) NULL,
    TKSL decimal(18,6) NULL,
    CLB  smallint      NULL,
    JE   decimal(18,6) NULL,
    PH   varchar(50)   NULL,
    XQ   datetime      NULL
  )
  CREATE INDEX IX_YFTYDJMX_TYDH ON YFTYDJMX (TYDH)
END
GO

-- Stock take: one row for each counted drug
IF OBJECT_ID('YF_PDMX') IS NULL
BEGIN
  CREATE TABLE YF_PDMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    PDRQ datetime      NOT NULL,
    YPBM varchar(30)   NOT NULL,
    LSJ  decimal(18,6) NULL,
    ZMKC decimal(18,6) NULL,                            -- book stock
    SJKC decimal(18,6) NULL,                            -- counted stock
    CZY  varchar(50)   NULL,
    DW   varchar(50)   NULL,
    KFBM varchar(50)   NULL
  )
  CREATE INDEX IX_YF_PDMX_YPBM ON YF_PDMX (YPBM, PDRQ)
  CREATE INDEX IX_YF_PDMX_PDRQ ON YF_PDMX (PDRQ)
END
GO

-- Loss and scrap
IF OBJECT_ID('YK_YPBSDJ') IS NULL
BEGIN
  CREATE TABLE YK_YPBSDJ (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFMC varchar(50)  NULL,
    BSDH varchar(50)  NOT NULL,
    BSRQ datetime     NULL,
    LYR  varchar(50)  NULL,
    FHR  varchar(50)  NULL,
    DJR  varchar(50)  NULL,
    BZ   varchar(500) NULL
  )
  CREATE INDEX IX_YK_YPBSDJ_BSDH ON YK_YPBSDJ (BSDH)
  CREATE INDEX IX_YK_YPBSDJ_BSRQ ON YK_YPBSDJ (BSRQ, id)
END
GO

IF OBJECT_ID('YK_YPBSDJMX') IS NULL
BEGIN
  CREATE TABLE YK_YPBSDJMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    BSDH varchar(50)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    YPMC varchar(100)  NULL,
    GG   varchar(100)  NULL,
    DW   varchar(50)   NULL,
    CD   varchar(100)  NULL,
    SL   decimal(18,6) NULL,
    LSJ  decimal(18,6) NULL,
    PFJ  decimal(18,6) NULL,
    PH   varchar(50)   NULL,
    XQ   datetime      NULL,
    CLB  smallint      NULL
  )
  CREATE INDEX IX_YK_YPBSDJMX_BSDH ON YK_YPBSDJMX (BSDH)
END
GO

-- Wholesale
IF OBJECT_ID('YP_YPPF') IS NULL
BEGIN
  CREATE TABLE YP_YPPF (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFBM varchar(50)  NULL,
    PFDH varchar(50)  NOT NULL,
    PFRQ datetime     NULL,
    FPH  varchar(50)  NULL,
    FPRQ datetime     NULL,
    PFDW varchar(100) NULL,
    YSR  varchar(50)  NULL,
    FHR  varchar(50)  NULL
  )
  CREATE INDEX IX_YP_YPPF_PFDH ON YP_YPPF (PFDH)
  CREATE INDEX IX_YP_YPPF_PFRQ ON YP_YPPF (PFRQ, id)
END
GO

IF OBJECT_ID('YP_YPPFMX') IS NULL
BEGIN
  CREATE TABLE YP_YPPFMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFBM varchar(50)   NULL,
    PFDH varchar(50)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    PM   varchar(100)  NULL,
    GG   varchar(100)  NULL,
    DW   varchar(50)   NULL,
    CD   varchar(100)  NULL,
    SL   decimal(18,6) NULL,
    PLJ  decimal(18,6) NULL,
    JE   decimal(18,6) NULL,
    CLB  smallint      NULL,
    SPH  varchar(50)   NULL,
    SXRQ datetime      NULL,
    LSJ  decimal(18,6) NULL
  )
  CREATE INDEX IX_YP_YPPFMX_PFDH ON YP_YPPFMX (PFDH)
END
GO

-- Wholesale return
IF OBJECT_ID('YP_YPPFTY') IS NULL
BEGIN
  CREATE TABLE YP_YPPFTY (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFBM varchar(50)  NULL,
    TYDH varchar(50)  NOT NULL,
    TYRQ datetime     NULL,
    TYDW varchar(100) NULL,
    YSR  varchar(50)  NULL,
    FHR  varchar(50)  NULL
  )
  CREATE INDEX IX_YP_YPPFTY_TYDH ON YP_YPPFTY (TYDH)
  CREATE INDEX IX_YP_YPPFTY_TYRQ ON YP_YPPFTY (TYRQ, id)
END
GO

IF OBJECT_ID('YP_YPPFTYMX') IS NULL
BEGIN
  CREATE TABLE YP_YPPFTYMX (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    KFBM varchar(50)   NULL,
    TYDH varchar(50)   NOT NULL,
    YPBM varchar(30)   NOT NULL,
    PM   varchar(100)  NULL,
    GG   varchar(100)  NULL,
    DW   varchar(50)   NULL,
    CD   varchar(100)  NULL,
    SL   decimal(18,6) NULL,
    CLB  smallint      NULL,
    SPH  varchar(50)   NULL,
    SXRQ datetime      NULL,
    PLJ  decimal(18,6) NULL,
    PLJE decimal(18,6) NULL,
    LSJ  decimal(18,6) NULL,
    JE   decimal(18,6) NULL
  )
  CREATE INDEX IX_YP_YPPFTYMX_TYDH ON YP_YPPFTYMX (TYDH)
END
GO

-- Purchase plan: each line repeats the head
IF OBJECT_ID('YF_YPCGJH') IS NULL
BEGIN
  CREATE TABLE YF_YPCGJH (
    id   int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    DH   varchar(50)  NOT NULL,
    BM   varchar(30)  NULL,
    YPMC varchar(100) NULL,
    DW   varchar(50)  NULL,
    GG   varchar(100) NULL,
    SL   float        NULL,
    SCCJ varchar(100) NULL,
    CGJG varchar(200) NULL,
    RQ   datetime     NULL,
    SQR  varchar(50)  NULL,
    FHR  varchar(50)  NULL
  )
  CREATE INDEX IX_YF_YPCGJH_DH ON YF_YPCGJH (DH)
  CREATE INDEX IX_YF_YPCGJH_RQ ON YF_YPCGJH (RQ, id)
END
GO

-- Price adjustment of drugs: Y... is the old price, X... the new one; stock figures are those of the moment
IF OBJECT_ID('YK_YPTJ') IS NULL
BEGIN
  CREATE TABLE YK_YPTJ (
    id     int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    YPBM   varchar(30)   NOT NULL,
    YPMC   varchar(100)  NULL,
    GG     varchar(100)  NULL,
    DW     varchar(50)   NULL,
    SCCJ   varchar(100)  NULL,
    CLB    float         NULL DEFAULT 1,
    KFMC   varchar(50)   NULL,
    YCLLSJ decimal(18,6) NULL,
    XCLLSJ decimal(18,6) NULL,
    YPLJ   decimal(18,6) NULL,
    XPLJ   decimal(18,6) NULL,
    YLSJ   decimal(18,6) NULL,
    XLSJ   decimal(18,6) NULL,
    YPFJ   decimal(18,6) NULL,
    XPFJ   decimal(18,6) NULL,
    KCL    decimal(18,6) NULL,
    YKKCL  decimal(18,6) NULL,
    TJWH   varchar(100)  NULL,
    TJRQ   datetime      NULL,
    FHR    varchar(50)   NULL
  )
  CREATE INDEX IX_YK_YPTJ_TJRQ ON YK_YPTJ (TJRQ)
  CREATE INDEX IX_YK_YPTJ_YPBM ON YK_YPTJ (YPBM)
END
GO

-- Price adjustment of examination items
IF OBJECT_ID('YK_JCXMTJ') IS NULL
BEGIN
  CREATE TABLE YK_JCXMTJ (
    id     int IDENTITY(1,1) NOT NULL PRIMARY KEY,
    YPBM   varchar(30)   NOT NULL,
    JCXMMC varchar(100)  NULL,
    GG     varchar(100)  NULL,
    DW     varchar(50)   NULL,
    YLSJ   decimal(18,6) NULL,
    XLSJ   decimal(18,6) NULL,
    TJWH   varchar(100)  NULL,
    TJRQ   datetime      NULL,
    FHR    varchar(50)   NULL,
    KFMC   varchar(50)   NULL
  )
  CREATE INDEX IX_YK_JCXMTJ_TJRQ ON YK_JCXMTJ (TJRQ)
END
GO
