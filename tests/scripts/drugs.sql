-- The drugs of the documents' stories, beside those of the demonstration store: one of packs of ten, one that is not
-- split, one of packs of six. None of them has batches or movements.
Insert Into YF_YPML(YPBM,YPMC,GG,DW,ZXDW,CLB,LSJ,CLLSJ,PFJ,PLJ,YKKCL,PYDM,WBDM,SCCJ,SFXM) Values
  ('T0001','试验胶囊甲','0.25g*10粒','盒','粒',10,15.5,1.55,12,13,0,'SYJNJ','YTEL','望川制药','西药费'),
  ('T0002','试验溶液乙','100ml','瓶','',1,8,0,5.25,6,7,'SYRYY','YTIIN','林壑药业','西药费'),
  ('T0003','试验片丙','0.1g*6片','盒','片',6,30,5,20,24,0,'SYPB','YTTG','云岫制药','西药费')
