BrellStudio.Execute("CheckExist", "-ds=house")
if BrellStudio.ReturnValue == True :
  BrellStudio.Execute("ContentDocument", "-n=house", "-op=e", "-fnp", "-tg=scd", "-st=u")
BrellStudio.Execute("CheckExist", "-ds=wall")
if BrellStudio.ReturnValue == True :
  BrellStudio.Execute("ContentDocument", "-n=wall", "-op=e", "-fnp", "-tg=scd", "-st=u")
BrellStudio.Execute("FileLoad", "C:/out/house.qmdl", "-isfc", "-laus")
BrellStudio.Execute("FileLoad", "C:/out/house.qskla", "-isfc", "-laus")
BrellStudio.Execute("FileLoad", "C:/out/Textures/wall.qtex", "-isfc", "-laus")
