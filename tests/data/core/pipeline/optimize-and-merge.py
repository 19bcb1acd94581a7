BrellStudio.Execute("FileLoad", "C:/out/house.qmdl")
BrellStudio.Execute("FileLoad", "C:/out/house.qskla")
BrellStudio.Execute("CheckExist", "-ds=house")
if BrellStudio.ReturnValue == True :
  BrellStudio.Execute("ContentDocument", "-n=house", "-op=e", "-fnp", "-tg=scd", "-st=u")
BrellStudio.Execute("Selection", "-cs=house", "-s=r")
BrellStudio.Execute("Selection", "-cs=house.SkeletalAnimation", "-s=add")
BrellStudio.Execute("Selection", "-cs=house.VisibilityAnimation", "-s=add")
BrellStudio.Execute("OptimizeSelectedModel", "-mode=CullUninfluentialBone", "-cmesh", "-opp", "-cmat", "-positionqm=Short", "-normalqm=Byte", "-textureqm=Float")
BrellStudio.Execute("SaveDocuments", "-idd")
BrellStudio.Execute("File" ,"")

BrellStudio.Execute("FileLoad", "C:/out/house.qmdl")
BrellStudio.Execute("CheckExist", "-ds=house")
if BrellStudio.ReturnValue == True :
  BrellStudio.Execute("ContentDocument", "-n=house", "-op=e", "-fnp", "-tg=scd", "-st=u")
BrellStudio.Execute("Selection", "-cs=house", "-s=r")
BrellStudio.Execute("FileLoad", "C:/temp/TQ4X_Softimage_Optimize_old.qmdl", "-opz=MergeContentQtr")
BrellStudio.Execute("FileSave", "-o=C:/out/house.qmdl", "--type=Save", "-ft=tq4xAscii", "-sao")
BrellStudio.Execute("File" ,"")

