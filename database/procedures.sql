-- Stored procedures of the storehouse system. Running this file again replaces them.
-- The names of parameters and of result columns follow the columns of the tables; dates are given as text.
-- Temporary tables name the database's collation, which need not be that of the server's tempdb.

---------------------------------------------------------------------------------------------------------------------
-- Item search
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('Get_YP_JCTestYK') IS NOT NULL DROP PROCEDURE Get_YP_JCTestYK
GO
-- Items of the storehouse @KFMC whose code begins as @NR says; runs on every keystroke of the item pickers.
--   @LB    '0' all, '1' drugs, '2' examinations and treatments
--   @ZD    'PYDM', 'WBDM' or 'YPBM'; a phonetic code is looked for in the name and in the trade name
--   @NR    pattern for LIKE
--   @YKC   '1' leaves out what has no storehouse stock
--   @ZY    is sent as '1' and says nothing
-- Stopped drugs are found like others, and the lists show by SFTY which they are: what is left of them has to be
-- returned, counted or scrapped, and their stop can be lifted.
-- Matches by name come ahead of matches by trade name, short codes ahead of long ones.
CREATE PROCEDURE Get_YP_JCTestYK
  @LB varchar(10), @ZD varchar(20), @NR varchar(100), @YKC varchar(10), @ZY varchar(10), @KFMC varchar(50)
AS
BEGIN
  IF @ZD = 'PYDM'
    SELECT * FROM YF_YPML
    WHERE (PYDM LIKE @NR OR SP_PYDM LIKE @NR)
      AND SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName LIKE @KFMC)
      AND (@LB <> '1' OR SFXM NOT IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@LB <> '2' OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@YKC <> '1' OR YKKCL > 0)
    ORDER BY CASE WHEN PYDM LIKE @NR THEN 0 ELSE 1 END, LEN(PYDM), PYDM, YPBM
  ELSE IF @ZD = 'WBDM'
    SELECT * FROM YF_YPML
    WHERE (WBDM LIKE @NR OR SP_WBDM LIKE @NR)
      AND SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName LIKE @KFMC)
      AND (@LB <> '1' OR SFXM NOT IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@LB <> '2' OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@YKC <> '1' OR YKKCL > 0)
    ORDER BY CASE WHEN WBDM LIKE @NR THEN 0 ELSE 1 END, LEN(WBDM), WBDM, YPBM
  ELSE
    SELECT * FROM YF_YPML
    WHERE YPBM LIKE @NR
      AND SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName LIKE @KFMC)
      AND (@LB <> '1' OR SFXM NOT IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@LB <> '2' OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@YKC <> '1' OR YKKCL > 0)
    ORDER BY LEN(YPBM), YPBM
END
GO

IF OBJECT_ID('GET_YP_JC2') IS NOT NULL DROP PROCEDURE GET_YP_JC2
GO
-- The same search over the whole catalogue, for price adjustments of examination items.
--   @KC    '1' leaves out what has no pharmacy stock, among the items that are kept in stock at all
CREATE PROCEDURE GET_YP_JC2
  @LB varchar(10), @ZD varchar(20), @NR varchar(100), @KC varchar(10)
AS
BEGIN
  IF @ZD = 'PYDM'
    SELECT * FROM YF_YPML
    WHERE (PYDM LIKE @NR OR SP_PYDM LIKE @NR)
      AND (@LB <> '1' OR SFXM NOT IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@LB <> '2' OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@KC <> '1' OR KCL > 0 OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE SFJKC = 0))
    ORDER BY CASE WHEN PYDM LIKE @NR THEN 0 ELSE 1 END, LEN(PYDM), PYDM, YPBM
  ELSE IF @ZD = 'WBDM'
    SELECT * FROM YF_YPML
    WHERE (WBDM LIKE @NR OR SP_WBDM LIKE @NR)
      AND (@LB <> '1' OR SFXM NOT IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@LB <> '2' OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@KC <> '1' OR KCL > 0 OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE SFJKC = 0))
    ORDER BY CASE WHEN WBDM LIKE @NR THEN 0 ELSE 1 END, LEN(WBDM), WBDM, YPBM
  ELSE
    SELECT * FROM YF_YPML
    WHERE YPBM LIKE @NR
      AND (@LB <> '1' OR SFXM NOT IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@LB <> '2' OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0))
      AND (@KC <> '1' OR KCL > 0 OR SFXM IN (SELECT sItemName FROM eK_ChargeItem WHERE SFJKC = 0))
    ORDER BY LEN(YPBM), YPBM
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Batches
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('YK_GetPH') IS NOT NULL DROP PROCEDURE YK_GetPH
GO
-- The drug's batches in stock, the first to expire first, those without expiry last.
CREATE PROCEDURE YK_GetPH
  @YPBM varchar(30)
AS
BEGIN
  SELECT PH, XQ, PFJ, SL, id, PLJ, RKDH, RKRQ
  FROM YK_CurryPH
  WHERE YPBM = @YPBM AND SL > 0
  ORDER BY CASE WHEN XQ IS NULL THEN 1 ELSE 0 END, XQ, RKRQ, id
END
GO

IF OBJECT_ID('SP_GetPH') IS NOT NULL DROP PROCEDURE SP_GetPH
GO
-- Batches for a sale, in the order of YK_GetPH but with expired ones at the end: only the first row is taken.
CREATE PROCEDURE SP_GetPH
  @YPBM varchar(30)
AS
BEGIN
  SELECT PH AS sph, XQ AS lYXQ, SL, PFJ, id
  FROM YK_CurryPH
  WHERE YPBM = @YPBM AND SL > 0
  ORDER BY CASE WHEN XQ < DATEADD(day, -1, GETDATE()) THEN 2 WHEN XQ IS NULL THEN 1 ELSE 0 END, XQ, RKRQ, id
END
GO

IF OBJECT_ID('Get_YKYPXQ') IS NOT NULL DROP PROCEDURE Get_YKYPXQ
GO
-- Batches of the storehouse's drugs that expire between two moments. All prices are those of the smallest unit, in
-- which SL counts; a batch's own price is that of the unit of the receipt line which created it.
CREATE PROCEDURE Get_YKYPXQ
  @KSRQ datetime, @JSRQ datetime, @KFMC varchar(50)
AS
BEGIN
  SELECT B.YPBM, B.YPMC, B.SPMC, B.GG, B.SCCJ, B.ZXDW, X.SL, X.PH, X.XQ,
         B.LSJ / X.BZ AS DJ,
         X.PFJ / X.RKCLB AS PFJ,
         X.SL * B.LSJ / X.BZ AS LSJJE,
         X.SL * X.PFJ / X.RKCLB AS PFJJE
  FROM (SELECT P.ID, P.YPBM, P.PH, P.XQ, P.SL, P.PFJ,
               CASE WHEN C.CLB > 1 THEN C.CLB ELSE 1 END AS BZ,
               ISNULL((SELECT MAX(M.CLB) FROM YK_YPRKMX M
                       WHERE M.RKDH = P.RKDH AND M.YPBM = P.YPBM AND M.PH = P.PH AND M.CLB > 0),
                      CASE WHEN C.CLB > 1 THEN C.CLB ELSE 1 END) AS RKCLB
        FROM YK_CurryPH P JOIN YF_YPML C ON C.YPBM = P.YPBM
        WHERE P.SL > 0 AND P.XQ BETWEEN @KSRQ AND @JSRQ
          AND C.SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName LIKE @KFMC)) X
       JOIN YF_YPML B ON B.YPBM = X.YPBM
  ORDER BY X.XQ, B.PYDM, X.ID
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Issue notes to a pharmacy
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('SP_YK_CKJC') IS NOT NULL DROP PROCEDURE SP_YK_CKJC
GO
-- The lines of an issue note that cannot be met, with the reason in YY. A drug that stands on several lines is met
-- only when the stock covers them all. Expired batches are no stock for a pharmacy and are named in the reason.
-- A note can be met out of the good batches, and out of what no batch accounts for: the counter less all batches.
--   @YK    1 when the counters have been lowered by the note already
CREATE PROCEDURE SP_YK_CKJC
  @SLDH varchar(50), @YK int
AS
BEGIN
  SET NOCOUNT ON

  -- Each drug of the note: what it needs, the counter ahead of the note, good and expired batches. GQPH names the latter.
  CREATE TABLE #YP (YPBM varchar(30) COLLATE DATABASE_DEFAULT NOT NULL PRIMARY KEY, SL decimal(18,6) NOT NULL,
                    KC decimal(18,6) NOT NULL, HGSL decimal(18,6) NOT NULL, GQSL decimal(18,6) NOT NULL,
                    DW varchar(50) COLLATE DATABASE_DEFAULT NOT NULL, GQPH varchar(2000) COLLATE DATABASE_DEFAULT NOT NULL)
  CREATE TABLE #GQ (XH int IDENTITY(1,1) NOT NULL, YPBM varchar(30) COLLATE DATABASE_DEFAULT NOT NULL,
                    PH varchar(50) COLLATE DATABASE_DEFAULT NOT NULL, XQ datetime NOT NULL, SL decimal(18,6) NOT NULL)
  DECLARE @XH int

  INSERT INTO #YP (YPBM, SL, KC, HGSL, GQSL, DW, GQPH)
  SELECT B.YPBM, X.SL, ISNULL(B.YKKCL, 0) + CASE @YK WHEN 1 THEN X.SL ELSE 0 END,
         ISNULL((SELECT SUM(P.SL) FROM YK_CurryPH P
                 WHERE P.YPBM = B.YPBM AND P.SL > 0 AND (P.XQ IS NULL OR P.XQ >= DATEADD(day, -1, GETDATE()))), 0),
         ISNULL((SELECT SUM(P.SL) FROM YK_CurryPH P
                 WHERE P.YPBM = B.YPBM AND P.SL > 0 AND P.XQ < DATEADD(day, -1, GETDATE())), 0),
         CASE WHEN ISNULL(B.ZXDW, '') = '' THEN ISNULL(B.DW, '') ELSE B.ZXDW END, ''
  FROM (SELECT YPBM, ISNULL(SUM(SFSL * CLB), 0) AS SL FROM YPSLMX WHERE SLDH = @SLDH GROUP BY YPBM) X
       JOIN YF_YPML B ON B.YPBM = X.YPBM

  INSERT INTO #GQ (YPBM, PH, XQ, SL)
  SELECT P.YPBM, ISNULL(P.PH, ''), P.XQ, P.SL
  FROM YK_CurryPH P JOIN #YP Y ON Y.YPBM = P.YPBM
  WHERE P.SL > 0 AND P.XQ < DATEADD(day, -1, GETDATE())
  ORDER BY P.XQ, P.ID
  SELECT @XH = MIN(XH) FROM #GQ
  WHILE @XH IS NOT NULL
  BEGIN
    UPDATE #YP
    SET GQPH = LEFT(#YP.GQPH + '，批号【' + G.PH + '】效期' + CONVERT(varchar(10), G.XQ, 120) + '的'
                    + REPLACE(CONVERT(varchar(20), CONVERT(decimal(18,2), G.SL)), '.00', '') + #YP.DW
                    + '已过期不能出库', 900)
    FROM #YP JOIN #GQ G ON G.YPBM = #YP.YPBM
    WHERE G.XH = @XH
    SELECT @XH = MIN(XH) FROM #GQ WHERE XH > @XH
  END

  -- What stays behind has to cover the expired batches, unless the good ones suffice: batches may exceed the counter.
  SELECT ISNULL(B.YPMC, '') AS YPMC, A.YPBM,
         CASE WHEN B.YPBM IS NULL THEN '药品目录中没有该药品'
              WHEN A.SFSL < 0 THEN '出库数量不能小于0'
              ELSE '需要' + REPLACE(CONVERT(varchar(20), CONVERT(decimal(18,2), Y.SL)), '.00', '') + Y.DW
                   + '，当前库存' + REPLACE(CONVERT(varchar(20), CONVERT(decimal(18,2), Y.KC)), '.00', '') + Y.DW + Y.GQPH
         END AS YY
  FROM YPSLMX A LEFT JOIN YF_YPML B ON B.YPBM = A.YPBM
                LEFT JOIN #YP Y ON Y.YPBM = A.YPBM
  WHERE A.SLDH = @SLDH
    AND (B.YPBM IS NULL OR A.SFSL < 0 OR Y.SL > Y.KC OR (Y.KC - Y.SL < Y.GQSL AND Y.SL > Y.HGSL))
  ORDER BY A.id
END
GO

IF OBJECT_ID('SP_Get_YK_CKQR') IS NOT NULL DROP PROCEDURE SP_Get_YK_CKQR
GO
-- The lines of an issue note that cannot be met, asked ahead of its confirmation.
CREATE PROCEDURE SP_Get_YK_CKQR
  @SLDH varchar(50)
AS
BEGIN
  EXEC SP_YK_CKJC @SLDH, 0
END
GO

IF OBJECT_ID('SP_YK_UpdateCKJG') IS NOT NULL DROP PROCEDURE SP_YK_UpdateCKJG
GO
-- Moves a confirmed issue note out of stock, whole or not at all: counter, batches, prices of the lines, log.
-- Batches go in the order of expiry, those without one last, expired ones never. A line that one batch does not cover
-- becomes one line for each batch; what is no whole number of the line's unit is then counted in the smallest unit.
-- Stock that no batch accounts for goes out without a batch number, since counter and batches may differ until the
-- next stock take.
CREATE PROCEDURE SP_YK_UpdateCKJG
  @SLDH varchar(50)
AS
BEGIN
  SET NOCOUNT ON
  SET XACT_ABORT ON

  DECLARE @LYDW varchar(100), @FYYK varchar(50), @YKQRR varchar(50), @XX varchar(2000)

  CREATE TABLE #BZ (XH int IDENTITY(1,1) NOT NULL, YPMC varchar(100) COLLATE DATABASE_DEFAULT NOT NULL,
                    YPBM varchar(30) COLLATE DATABASE_DEFAULT NOT NULL, YY varchar(2000) COLLATE DATABASE_DEFAULT NOT NULL)
  -- A line's quantity in the smallest unit, SL, starts behind the QS that the lines ahead of it take of the drug.
  CREATE TABLE #MX (id int NOT NULL, YPBM varchar(30) COLLATE DATABASE_DEFAULT NOT NULL,
                    SL decimal(18,6) NOT NULL, QS decimal(18,6) NOT NULL)
  -- In the same way a batch's stock starts behind the batches that are used up ahead of it.
  CREATE TABLE #PC (XH int IDENTITY(1,1) NOT NULL, ID int NOT NULL, YPBM varchar(30) COLLATE DATABASE_DEFAULT NOT NULL,
                    PH varchar(50) COLLATE DATABASE_DEFAULT NULL, XQ datetime NULL,
                    SL decimal(18,6) NOT NULL, QS decimal(18,6) NOT NULL)
  -- What each line takes of each batch, behind the QS that it takes of others; without a batch PCID is NULL. CX tells
  -- that it is counted in the smallest unit at the price LSJ, and GSL of it a millionth dearer.
  CREATE TABLE #FP (MXID int NOT NULL, PCID int NULL, PH varchar(50) COLLATE DATABASE_DEFAULT NULL, XQ datetime NULL,
                    SL decimal(18,6) NOT NULL, QS decimal(18,6) NOT NULL, XH int NOT NULL,
                    CX int NOT NULL DEFAULT 0, LSJ decimal(18,6) NULL, GSL decimal(18,6) NULL)

  BEGIN TRAN

  IF NOT EXISTS (SELECT 1 FROM YPSLD WHERE SLDH = @SLDH AND SFQR = 1)
  BEGIN
    ROLLBACK TRAN
    SET @XX = '出库单【' + @SLDH + '】没有确认，不能出库。'
    RAISERROR('%s', 16, 1, @XX)
    RETURN
  END
  SELECT @LYDW = LYDW, @FYYK = FYYK, @YKQRR = YKQRR FROM YPSLD WHERE SLDH = @SLDH AND SFQR = 1

  -- A line has its price from here on; a second call finds none without and stops.
  UPDATE YPSLMX
  SET LSJ = ISNULL((SELECT CASE YPSLMX.DW WHEN B.DW THEN B.LSJ ELSE B.CLLSJ END
                    FROM YF_YPML B WHERE B.YPBM = YPSLMX.YPBM), 0)
  WHERE SLDH = @SLDH AND LSJ IS NULL
  IF @@ROWCOUNT = 0
  BEGIN
    ROLLBACK TRAN
    SET @XX = '出库单【' + @SLDH + '】没有需要出库的明细，或者已经出库。'
    RAISERROR('%s', 16, 1, @XX)
    RETURN
  END

  -- Subtracting first and testing afterwards leaves no gap for another workstation.
  UPDATE YF_YPML
  SET YKKCL = ISNULL(YKKCL, 0) - ISNULL((SELECT SUM(A.SFSL * A.CLB) FROM YPSLMX A
                                         WHERE A.SLDH = @SLDH AND A.YPBM = YF_YPML.YPBM), 0)
  WHERE YPBM IN (SELECT YPBM FROM YPSLMX WHERE SLDH = @SLDH)
  INSERT INTO #BZ (YPMC, YPBM, YY) EXEC SP_YK_CKJC @SLDH, 1
  IF EXISTS (SELECT 1 FROM #BZ)
  BEGIN
    SELECT @XX = '【' + YPMC + '  ' + YPBM + '】库存不足，' + YY + '。出库单【' + @SLDH + '】没有出库。' FROM #BZ WHERE XH = 1
    ROLLBACK TRAN
    RAISERROR('%s', 16, 1, @XX)
    RETURN
  END

  INSERT INTO YPCRK (YPBM, SL, CLB, KCL, DW, LB, MS, RQ, KFBM, BZ, CZY)
  SELECT YPBM, SFSL, CLB, SFSL * CLB, DW, 1, '药库出库到 ' + ISNULL(@LYDW, ''), GETDATE(), @FYYK,
         '出库单号：' + @SLDH, @YKQRR
  FROM YPSLMX
  WHERE SLDH = @SLDH AND SFSL * CLB > 0
  ORDER BY id

  INSERT INTO #MX (id, YPBM, SL, QS)
  SELECT A.id, A.YPBM, A.SFSL * A.CLB,
         ISNULL((SELECT SUM(Q.SFSL * Q.CLB) FROM YPSLMX Q
                 WHERE Q.SLDH = @SLDH AND Q.YPBM = A.YPBM AND Q.id < A.id), 0)
  FROM YPSLMX A
  WHERE A.SLDH = @SLDH AND A.SFSL * A.CLB > 0

  INSERT INTO #PC (ID, YPBM, PH, XQ, SL, QS)
  SELECT ID, YPBM, PH, XQ, SL, 0
  FROM YK_CurryPH
  WHERE SL > 0 AND (XQ IS NULL OR XQ >= DATEADD(day, -1, GETDATE())) AND YPBM IN (SELECT YPBM FROM #MX)
  ORDER BY CASE WHEN XQ IS NULL THEN 1 ELSE 0 END, XQ, RKRQ, ID
  UPDATE #PC
  SET QS = ISNULL((SELECT SUM(Q.SL) FROM #PC Q WHERE Q.YPBM = #PC.YPBM AND Q.XH < #PC.XH), 0)

  INSERT INTO #FP (MXID, PCID, PH, XQ, SL, QS, XH)
  SELECT M.id, P.ID, P.PH, P.XQ,
         CASE WHEN M.QS + M.SL < P.QS + P.SL THEN M.QS + M.SL ELSE P.QS + P.SL END
         - CASE WHEN M.QS > P.QS THEN M.QS ELSE P.QS END,
         CASE WHEN M.QS > P.QS THEN 0 ELSE P.QS - M.QS END, P.XH
  FROM #MX M JOIN #PC P ON P.YPBM = M.YPBM
  WHERE M.QS < P.QS + P.SL AND P.QS < M.QS + M.SL
  INSERT INTO #FP (MXID, PCID, PH, XQ, SL, QS, XH)
  SELECT X.id, NULL, NULL, NULL, X.SL - X.YP, X.YP, 2147483647
  FROM (SELECT M.id, M.SL, ISNULL((SELECT SUM(F.SL) FROM #FP F WHERE F.MXID = M.id), 0) AS YP FROM #MX M) X
  WHERE X.SL > X.YP

  UPDATE YK_CurryPH
  SET SL = SL - (SELECT SUM(F.SL) FROM #FP F WHERE F.PCID = YK_CurryPH.ID)
  WHERE ID IN (SELECT PCID FROM #FP WHERE PCID IS NOT NULL)
  DELETE FROM YK_CurryPH WHERE SL <= 0 AND ID IN (SELECT PCID FROM #FP WHERE PCID IS NOT NULL)

  -- Lines that one batch covers keep their row, the others are written anew.
  UPDATE YPSLMX
  SET PH = (SELECT F.PH FROM #FP F WHERE F.MXID = YPSLMX.id),
      XQ = (SELECT F.XQ FROM #FP F WHERE F.MXID = YPSLMX.id)
  WHERE id IN (SELECT MXID FROM #FP GROUP BY MXID HAVING COUNT(*) = 1)
  DELETE FROM #FP WHERE MXID IN (SELECT MXID FROM #FP GROUP BY MXID HAVING COUNT(*) = 1)

  -- A line is worth the same split or not, to the last decimal: the smallest unit costs the line's price over its ratio,
  -- cut to the six decimals of a price, and of the units so counted the first few cost a millionth more, as many as
  -- make up for the cut. CLLSJ is another price, and 0 where nobody has set it.
  UPDATE #FP
  SET CX = 1, LSJ = ROUND(A.LSJ / A.CLB, 6, 1)
  FROM #FP JOIN YPSLMX A ON A.id = #FP.MXID JOIN YF_YPML B ON B.YPBM = A.YPBM
  WHERE FLOOR(#FP.SL / A.CLB) * A.CLB <> #FP.SL AND ISNULL(B.ZXDW, '') <> '' AND B.ZXDW <> ISNULL(A.DW, '')
  UPDATE #FP
  SET GSL = (A.LSJ - #FP.LSJ * A.CLB) * 1000000
            * (SELECT SUM(F.SL) FROM #FP F WHERE F.MXID = #FP.MXID AND F.CX = 1) / A.CLB
            - ISNULL((SELECT SUM(F.SL) FROM #FP F WHERE F.MXID = #FP.MXID AND F.CX = 1 AND F.XH < #FP.XH), 0)
  FROM #FP JOIN YPSLMX A ON A.id = #FP.MXID
  WHERE #FP.CX = 1
  UPDATE #FP SET GSL = CASE WHEN GSL < 0 THEN 0 WHEN GSL > SL THEN SL ELSE GSL END WHERE CX = 1

  INSERT INTO YPSLMX (SLDH, YPBM, DW, CD, SLSL, SFSL, CLB, LSJ, PH, XQ)
  SELECT A.SLDH, A.YPBM, X.DW, A.CD, X.SL, X.SL, X.CLB, X.LSJ, X.PH, X.XQ
  FROM (SELECT F.MXID, F.XH, A.DW, ROUND((F.QS + F.SL) / A.CLB, 6) - ROUND(F.QS / A.CLB, 6) AS SL, A.CLB, A.LSJ, F.PH, F.XQ
        FROM #FP F JOIN YPSLMX A ON A.id = F.MXID WHERE F.CX = 0
        UNION ALL
        SELECT F.MXID, F.XH, B.ZXDW, F.GSL, 1, F.LSJ + 0.000001, F.PH, F.XQ
        FROM #FP F JOIN YPSLMX A ON A.id = F.MXID JOIN YF_YPML B ON B.YPBM = A.YPBM WHERE F.CX = 1 AND F.GSL > 0
        UNION ALL
        SELECT F.MXID, F.XH, B.ZXDW, F.SL - F.GSL, 1, F.LSJ, F.PH, F.XQ
        FROM #FP F JOIN YPSLMX A ON A.id = F.MXID JOIN YF_YPML B ON B.YPBM = A.YPBM WHERE F.CX = 1 AND F.GSL < F.SL) X
       JOIN YPSLMX A ON A.id = X.MXID
  ORDER BY X.MXID, X.XH, X.LSJ DESC
  DELETE FROM YPSLMX WHERE id IN (SELECT MXID FROM #FP)

  COMMIT TRAN
END
GO

IF OBJECT_ID('SP_YK_GetCKDList') IS NOT NULL DROP PROCEDURE SP_YK_GetCKDList
GO
-- Confirmed issue notes of a storehouse with their value at retail (LSJJE) and at the catalogue's purchase price (JJJE).
CREATE PROCEDURE SP_YK_GetCKDList
  @KFMC varchar(50), @KSRQ datetime, @JSRQ datetime, @LYDW varchar(100)
AS
BEGIN
  SELECT D.SLDH, D.CKRQ, D.LYDW,
         ISNULL((SELECT SUM(A.LSJ * A.SFSL) FROM YPSLMX A WHERE A.SLDH = D.SLDH), 0) AS LSJJE,
         ISNULL((SELECT SUM(CASE WHEN A.DW = B.DW OR ISNULL(B.CLB, 0) = 0 THEN B.PFJ * A.SFSL
                                 ELSE B.PFJ / B.CLB * A.SFSL * A.CLB END)
                 FROM YPSLMX A JOIN YF_YPML B ON B.YPBM = A.YPBM WHERE A.SLDH = D.SLDH), 0) AS JJJE,
         D.CZY, D.YKQRR, D.YFQRR
  FROM YPSLD D
  WHERE D.SFQR = 1 AND D.CKFS = 1 AND D.FYYK LIKE @KFMC
    AND D.CKRQ BETWEEN @KSRQ AND @JSRQ AND D.LYDW LIKE @LYDW
  ORDER BY D.CKRQ, D.ID
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Stock take
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('SP_Get_WFYYPML') IS NOT NULL DROP PROCEDURE SP_Get_WFYYPML
GO
-- Drugs of the storehouse that no stock take of the period has counted.
CREATE PROCEDURE SP_Get_WFYYPML
  @KSRQ datetime, @JSRQ datetime, @KFMC varchar(50)
AS
BEGIN
  SELECT YPBM, YPMC, SPMC, GG, DW, SCCJ, YKKCL, LSJ, PFJ, CLB, ZXDW, CLLSJ, SFXM
  FROM YF_YPML
  WHERE SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName LIKE @KFMC)
    AND NOT EXISTS (SELECT 1 FROM YF_PDMX P
                    WHERE P.YPBM = YF_YPML.YPBM AND P.PDRQ BETWEEN @KSRQ AND @JSRQ AND P.KFBM LIKE @KFMC)
  ORDER BY PYDM, YPBM
END
GO

IF OBJECT_ID('SP_Set_PDKC') IS NOT NULL DROP PROCEDURE SP_Set_PDKC
GO
-- Sets the storehouse stock of the drugs that SP_Get_WFYYPML lists to 0: counter, batches and log. The log takes the row
-- of a stock take that counted 0, without an operator, whom the call does not name: without it the report of earlier
-- periods would be counted back from a 0 that no movement led to. Only drugs get one of which anything but 0 is known;
-- it would change nothing for the others, which in a large catalogue are most, and a second call writes none. A drug
-- whose log alone is off gets one too, so that all three figures agree from here on.
CREATE PROCEDURE SP_Set_PDKC
  @KSRQ datetime, @JSRQ datetime, @KFMC varchar(50)
AS
BEGIN
  SET NOCOUNT ON
  SET XACT_ABORT ON
  -- The counter and the last stock take of each drug
  CREATE TABLE #WP (YPBM varchar(30) COLLATE DATABASE_DEFAULT NOT NULL PRIMARY KEY, YKKCL decimal(18,6) NOT NULL, PDID int NULL)

  BEGIN TRAN
  INSERT INTO #WP (YPBM, YKKCL)
  SELECT YPBM, ISNULL(YKKCL, 0)
  FROM YF_YPML
  WHERE SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName LIKE @KFMC)
    AND NOT EXISTS (SELECT 1 FROM YF_PDMX P
                    WHERE P.YPBM = YF_YPML.YPBM AND P.PDRQ BETWEEN @KSRQ AND @JSRQ AND P.KFBM LIKE @KFMC)
  UPDATE YF_YPML SET YKKCL = 0 WHERE YPBM IN (SELECT YPBM FROM #WP)

  -- What another workstation moved up to here stands in the log by now.
  UPDATE #WP SET PDID = (SELECT MAX(C.id) FROM YPCRK C WHERE C.YPBM = #WP.YPBM AND C.MS = '药品盘点')
  INSERT INTO YPCRK (YPBM, SL, CLB, KCL, DW, LB, MS, RQ, KFBM, BZ, CZY)
  SELECT W.YPBM, 0, 1, 0, CASE WHEN B.CLB >= 2 THEN B.ZXDW ELSE B.DW END, 0, '药品盘点', GETDATE(), @KFMC,
         '盘点日期：' + CONVERT(varchar(10), GETDATE(), 120), ''
  FROM #WP W JOIN YF_YPML B ON B.YPBM = W.YPBM
  WHERE W.YKKCL <> 0
     OR EXISTS (SELECT 1 FROM YK_CurryPH P WHERE P.YPBM = W.YPBM AND P.SL <> 0)
     OR ISNULL((SELECT C.KCL FROM YPCRK C WHERE C.id = W.PDID), 0)
        + ISNULL((SELECT SUM(CASE C.LB WHEN 0 THEN C.KCL ELSE -C.KCL END) FROM YPCRK C
                  WHERE C.YPBM = W.YPBM AND C.id > ISNULL(W.PDID, 0)), 0) <> 0
  ORDER BY W.YPBM

  DELETE FROM YK_CurryPH WHERE YPBM IN (SELECT YPBM FROM #WP)
  COMMIT TRAN
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Purchase plan
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('YK_YGYP') IS NOT NULL DROP PROCEDURE YK_YGYP
GO
-- Drugs to buy: those in use whose good stock has fallen to the lower limit. Stock that expires within 90 days is not
-- counted on: what remains of the counter without it or, where the batches exceed the counter, what the good batches
-- hold, so that batches which wholesale left behind neither hide good stock nor make it negative.
-- Figures are in the large unit: KCL the good stock, KCSX the upper limit up to which to buy, ZDJJ and ZGJJ the lowest
-- and highest price paid, ZDGHS who asked the lowest price most recently.
CREATE PROCEDURE YK_YGYP
  @KFMC varchar(50)
AS
BEGIN
  SELECT X.YPBM, X.YPMC, X.SPMC, X.GG, X.DW,
         ROUND(X.KC / X.BZ, 2) AS KCL,
         ROUND(X.KCSX / X.BZ, 2) AS KCSX,
         X.SCCJ,
         (SELECT MIN(M.PFJ) FROM YK_YPRKMX M WHERE M.YPBM = X.YPBM AND M.PFJ > 0 AND M.RKSL > 0) AS ZDJJ,
         (SELECT TOP 1 D.GHDW FROM YK_YPRKMX M JOIN YK_YPRK D ON D.RKDH = M.RKDH
          WHERE M.YPBM = X.YPBM AND M.PFJ > 0 AND M.RKSL > 0 ORDER BY M.PFJ, M.id DESC) AS ZDGHS,
         (SELECT MAX(M.PFJ) FROM YK_YPRKMX M WHERE M.YPBM = X.YPBM AND M.PFJ > 0 AND M.RKSL > 0) AS ZGJJ
  FROM (SELECT Y.YPBM, Y.YPMC, Y.SPMC, Y.GG, Y.DW, Y.SCCJ, Y.PYDM, Y.KCSX, Y.KCXX, Y.BZ,
               CASE WHEN Y.KCL <= 0 THEN 0
                    WHEN Y.KCL - Y.LJSL > Y.HGSL THEN Y.KCL - Y.LJSL
                    WHEN Y.KCL > Y.HGSL THEN Y.HGSL
                    ELSE Y.KCL END AS KC
        FROM (SELECT YPBM, YPMC, SPMC, GG, DW, SCCJ, PYDM, YKKCSX AS KCSX, YKKCXX AS KCXX, ISNULL(YKKCL, 0) AS KCL,
                     CASE WHEN CLB > 1 THEN CLB ELSE 1 END AS BZ,
                     ISNULL((SELECT SUM(P.SL) FROM YK_CurryPH P
                             WHERE P.YPBM = YF_YPML.YPBM AND P.SL > 0 AND P.XQ < DATEADD(day, 90, GETDATE())), 0) AS LJSL,
                     ISNULL((SELECT SUM(P.SL) FROM YK_CurryPH P
                             WHERE P.YPBM = YF_YPML.YPBM AND P.SL > 0
                               AND (P.XQ IS NULL OR P.XQ >= DATEADD(day, 90, GETDATE()))), 0) AS HGSL
              FROM YF_YPML
              WHERE SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName LIKE @KFMC)
                AND ISNULL(SFTY, 0) = 0 AND YKKCXX <> 0) Y) X
  WHERE X.KC <= X.KCXX
  ORDER BY X.PYDM, X.YPBM
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Reports from the movement log
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('Get_YP_HistoryList') IS NOT NULL DROP PROCEDURE Get_YP_HistoryList
GO
-- The movements of one drug in one storehouse.
CREATE PROCEDURE Get_YP_HistoryList
  @YPBM varchar(30), @KSRQ datetime, @JSRQ datetime, @KFMC varchar(50)
AS
BEGIN
  SELECT LB, MS AS ms, SL, DW, CLB, KCL, RQ, KFBM, BZ, CZY
  FROM YPCRK
  WHERE YPBM = @YPBM AND RQ BETWEEN @KSRQ AND @JSRQ AND KFBM LIKE @KFMC
  ORDER BY RQ, id
END
GO

IF OBJECT_ID('Get_YPYJ_List') IS NOT NULL DROP PROCEDURE Get_YPYJ_List
GO
-- Opening stock, movements and closing stock of each drug over a period, in the smallest unit, and amounts at the
-- present retail price. What counts and corrections did is the rest: closing less opening, less in, plus out.
-- The stock at a moment is taken from the nearest firm figure: back from the present counter when no stock take lies
-- between, else forward from the last stock take, else forward from the beginning of the log. A stock take's own row
-- in the log holds the counted stock and is no movement.
CREATE PROCEDURE Get_YPYJ_List
  @YPBM varchar(30), @KSRQ datetime, @JSRQ datetime, @SFXM varchar(50)
AS
BEGIN
  SET NOCOUNT ON
  -- XH 1 is the opening, 2 the closing: the stock ahead of the moment SJ. QPD and HPD are the stock takes around it.
  CREATE TABLE #KC (YPBM varchar(30) COLLATE DATABASE_DEFAULT NOT NULL, XH int NOT NULL, SJ datetime NOT NULL,
                    YKKCL decimal(18,6) NOT NULL, QPD int NULL, HPD int NULL, SL decimal(18,6) NULL, PRIMARY KEY (YPBM, XH))

  INSERT INTO #KC (YPBM, XH, SJ, YKKCL)
  SELECT YPBM, 1, @KSRQ, ISNULL(YKKCL, 0) FROM YF_YPML
  WHERE YPBM LIKE @YPBM AND ISNULL(SFXM, '') LIKE @SFXM
    AND (YKKCL <> 0 OR EXISTS (SELECT 1 FROM YPCRK C WHERE C.YPBM = YF_YPML.YPBM))
  INSERT INTO #KC (YPBM, XH, SJ, YKKCL)
  SELECT YPBM, 2, DATEADD(second, 1, @JSRQ), YKKCL FROM #KC WHERE XH = 1

  UPDATE #KC
  SET QPD = (SELECT MAX(C.id) FROM YPCRK C WHERE C.YPBM = #KC.YPBM AND C.RQ < #KC.SJ AND C.MS = '药品盘点'),
      HPD = (SELECT MIN(C.id) FROM YPCRK C WHERE C.YPBM = #KC.YPBM AND C.RQ >= #KC.SJ AND C.MS = '药品盘点')
  UPDATE #KC
  SET SL = YKKCL - ISNULL((SELECT SUM(CASE C.LB WHEN 0 THEN C.KCL ELSE -C.KCL END) FROM YPCRK C
                           WHERE C.YPBM = #KC.YPBM AND C.RQ >= #KC.SJ), 0)
  WHERE HPD IS NULL
  UPDATE #KC
  SET SL = ISNULL((SELECT C.KCL FROM YPCRK C WHERE C.id = #KC.QPD), 0)
           + ISNULL((SELECT SUM(CASE C.LB WHEN 0 THEN C.KCL ELSE -C.KCL END) FROM YPCRK C
                     WHERE C.YPBM = #KC.YPBM AND C.RQ < #KC.SJ AND C.id > ISNULL(#KC.QPD, 0)), 0)
  WHERE HPD IS NOT NULL

  SELECT X.YPBM AS '药品编码', X.YPMC AS '药品名称', X.GG AS '规格', X.DW AS '单位', X.SCCJ AS '产地',
         X.SFXM AS '收费项目',
         X.QC AS '期初数量', X.RK AS '入库数量', X.CK AS '出库数量', X.QM AS '期末数量',
         ROUND(X.QM * X.LSJ, 2) AS '期末金额',
         X.QM - X.QC - X.RK + X.CK AS '盘点及调整数量',
         ROUND(X.QC * X.LSJ, 2) AS '期初金额', ROUND(X.RK * X.LSJ, 2) AS '入库金额', ROUND(X.CK * X.LSJ, 2) AS '出库金额'
  FROM (SELECT B.YPBM, B.YPMC, B.GG, B.SCCJ, B.SFXM, B.PYDM,
               CASE WHEN ISNULL(B.ZXDW, '') = '' THEN B.DW ELSE B.ZXDW END AS DW,
               ISNULL(B.LSJ, 0) / CASE WHEN B.CLB > 1 THEN B.CLB ELSE 1 END AS LSJ,
               Q.SL AS QC, M.SL AS QM,
               ISNULL((SELECT SUM(C.KCL) FROM YPCRK C WHERE C.YPBM = B.YPBM AND C.RQ >= Q.SJ AND C.RQ < M.SJ
                                                        AND C.LB = 0 AND ISNULL(C.MS, '') <> '药品盘点'), 0) AS RK,
               ISNULL((SELECT SUM(C.KCL) FROM YPCRK C WHERE C.YPBM = B.YPBM AND C.RQ >= Q.SJ AND C.RQ < M.SJ
                                                        AND C.LB = 1), 0) AS CK
        FROM YF_YPML B JOIN #KC Q ON Q.YPBM = B.YPBM AND Q.XH = 1
                       JOIN #KC M ON M.YPBM = B.YPBM AND M.XH = 2) X
  WHERE X.QC <> 0 OR X.QM <> 0 OR X.RK <> 0 OR X.CK <> 0
  ORDER BY X.PYDM, X.YPBM
END
GO

---------------------------------------------------------------------------------------------------------------------
-- Combination items and table definitions
---------------------------------------------------------------------------------------------------------------------

IF OBJECT_ID('GET_ZHXM') IS NOT NULL DROP PROCEDURE GET_ZHXM
GO
-- What @SL of the combination item @ZHBM consists of.
CREATE PROCEDURE GET_ZHXM
  @ZHBM varchar(30), @SL decimal(18,6)
AS
BEGIN
  SELECT B.YPBM, B.YPMC, B.GG, B.DW, B.SCCJ, B.YKKCL, B.LSJ, B.PFJ, B.CLB, B.ZXDW, B.CLLSJ, M.SL * @SL AS SL
  FROM YF_ZHXMMX M JOIN YF_YPML B ON B.YPBM = M.YPBM
  WHERE M.ZHBM = @ZHBM
  ORDER BY M.id
END
GO

IF OBJECT_ID('SP_GetTableInfo') IS NOT NULL DROP PROCEDURE SP_GetTableInfo
GO
-- The columns of a table, with the caption that DATAGRID_HEAD knows for them and the kind as it is told there.
CREATE PROCEDURE SP_GetTableInfo
  @Tabel_Name varchar(100)
AS
BEGIN
  SELECT C.COLUMN_NAME AS '字段名',
         ISNULL((SELECT MIN(H.File_Cname) FROM DATAGRID_HEAD H
                 WHERE H.Tabel_Name = @Tabel_Name AND H.File_Ename = C.COLUMN_NAME), C.COLUMN_NAME) AS '字段说明',
         CASE WHEN C.DATA_TYPE IN ('int', 'smallint', 'tinyint', 'bigint', 'bit', 'decimal', 'numeric', 'money',
                                   'smallmoney', 'float', 'real') THEN '2'
              WHEN C.DATA_TYPE IN ('datetime', 'smalldatetime', 'datetime2', 'date') THEN '3'
              ELSE '1' END AS '类型'
  FROM INFORMATION_SCHEMA.COLUMNS C
  WHERE C.TABLE_NAME = @Tabel_Name
  ORDER BY C.ORDINAL_POSITION
END
GO
